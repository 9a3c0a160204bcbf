#pragma once

#include <QObject>

#include "desktop/live_check.h"
#include "ui/support/workbench.h"

namespace zentro {

class SourceFiles;
class SourceWindow;

/// Checks the program while it is typed and marks its mistakes in the open windows. What is checked
/// is the main file to compile, or while there is none the file that is worked on.
class SourceChecks : public QObject {
    Q_OBJECT

  public:
    SourceChecks(Workbench& workbench, SourceFiles& files, QObject* parent);

    bool IsOn() const { return check_.IsOn(); }
    /// Switches the checks on or off, now and for the next start.
    void SwitchOn(bool on);
    /// The settings were changed.
    void ReadSetting();

    /// The file that is worked on, or the main file, may be another one now.
    void ChooseProgram();

  private:
    void Follow(SourceWindow* window);
    void ShowMessages();
    std::optional<std::string> OpenText(const std::string& path) const;

    Workbench& workbench_;
    SourceFiles& files_;
    LiveCheck check_;
    const SourceWindow* checked_ = nullptr;  ///< compared only
};

}  // namespace zentro
