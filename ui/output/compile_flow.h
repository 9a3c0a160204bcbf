#pragma once

#include <QList>
#include <optional>

#include "ui/output/compile_select_dialog.h"
#include "ui/support/workbench.h"

class QWidget;

namespace zentro {

/// The open source files, as the choice of the file to compile sees them. Files are named by their
/// place in the order of their tabs, from 0.
class OpenFiles {
  public:
    virtual ~OpenFiles() = default;

    virtual QList<OpenFileName> Names() const = 0;
    /// The file in front; nothing when no file is open.
    virtual std::optional<int> FrontFile() const = 0;
    /// The file to compile; nothing when none is chosen yet.
    virtual std::optional<int> MainFile() const = 0;
    /// Remembers the file to compile and marks its tab.
    virtual void SetMainFile(int file) = 0;
    /// Opens a file in a window and tab of its own, or finds the tab that it has. Nothing when it
    /// cannot be opened, which has been told then.
    virtual std::optional<int> OpenFromDisk(const QString& folder, const QString& name) = 0;

    virtual bool HasChanged(int file) const = 0;
    /// A new file has nothing on disk before its first save.
    virtual bool WasNeverSaved(int file) const = 0;
    /// Saves the file; a new one asks for its name. False when it was not saved, which has been
    /// told then.
    virtual bool Save(int file) = 0;
};

enum class CompileCommand { Compile, SyntaxCheck };

/// Finds the file that a compile begins with and brings it to disk. Returns its place; nothing when
/// the command ends here. A parent of the dialogs may be null.
std::optional<int> PrepareMainFile(CompileCommand command, OpenFiles& files,
                                   const Workbench& workbench, QWidget* parent);

}  // namespace zentro
