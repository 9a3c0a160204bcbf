#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <functional>
#include <optional>
#include <vector>

#include "desktop/program_index.h"
#include "ui/support/workbench.h"

namespace zentro {

class LiveCheck;
class SourceFiles;
class SourceWindow;

/// What can be done with the name at the caret: go to its declaration and back, rename it, and see
/// its other places.
class NameCommands : public QObject {
    Q_OBJECT

  public:
    /// Shows a sentence for a while.
    using Tell = std::function<void(const QString&)>;

    /// All of them outlive the object.
    NameCommands(Workbench& workbench, Programs& programs, SourceFiles& files, LiveCheck& checks,
                 Tell tell, QObject* parent);
    ~NameCommands() override;

    void GoToDeclaration();
    /// To where the last jump began that was not taken back yet.
    void GoBack();
    /// The caret is about to jump.
    void NotePlace(SourceWindow& source);
    void RenameName();

    /// Brings the file with the key to the front and opens it first if need be; null when it cannot
    /// be opened, which has been told then.
    SourceWindow* Show(const QString& key);

  private:
    /// A place that moves with its text as long as its window is open.
    struct Place {
        QPointer<SourceWindow> window;
        int handle = 0;
        int column = 0;
    };
    struct Piece;

    std::optional<ProgramIndex> ReadProgram();
    void GoTo(SourceWindow& from, const TextPlace& place);
    QString WhyNoName(const ProgramIndex& index) const;
    QString PlacesText(const IndexedName& name) const;
    void PutName(SourceWindow& front, const IndexedName& name, const QString& newName);
    void MarkLater();
    void MarkUses();

    Workbench& workbench_;
    Programs& programs_;
    SourceFiles& files_;
    LiveCheck& checks_;
    Tell tell_;
    std::vector<Place> history_;
    std::optional<ProgramIndex> index_;  ///< of what was marked last
    QPointer<SourceWindow> marked_;
    QTimer rest_;
};

}  // namespace zentro
