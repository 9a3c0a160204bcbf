#pragma once

#include <QObject>
#include <QTimer>
#include <map>

#include "desktop/file_watcher.h"
#include "desktop/programs.h"
#include "desktop/recovery_service.h"
#include "ui/support/workbench.h"

class QWidget;

namespace zentro {

class SourceFiles;
class SourceWindow;

/// Sees that no text is lost: keeps copies of what is not saved, offers what a crash left, and
/// tells when somebody else changed an open file.
class RecoveryKeeper : public QObject {
    Q_OBJECT

  public:
    RecoveryKeeper(Workbench& workbench, Programs& programs, SourceFiles& windows, QObject* parent);
    ~RecoveryKeeper() override;

    /// Copies every changed text now; it is on the disk some time later.
    void KeepAll();
    /// The same, and it is on the disk when this returns. Returns the message for the user when it
    /// is not.
    QString KeepNow();
    /// The same, and whatever happens to the windows later leaves the copies as they are.
    QString KeepLast();
    /// Offers what runs of the program left that ended without saving, if there is any.
    void OfferUnsaved(QWidget* parent);
    /// Shows the copies of the file in front and takes one back.
    void ShowCopies(QWidget* parent);
    /// The program ends in order: nothing is offered again.
    void EndSession();

  private:
    /// What was seen of a file last.
    struct Followed {
        QString path;
        Revision savedRevision = 0;
    };

    void Follow();
    void FollowFile(const OpenFile& file);
    void Keep(const OpenFile& file);
    void Forget(FileId id);
    void TakeBack(const UnsavedText& unsaved);
    void LookAtDisk(const QString& path);
    void OfferReload(const OpenFile& file);
    void TellOnce(const QString& problem);

    Workbench& workbench_;
    Programs& programs_;
    SourceFiles& windows_;
    RecoveryService store_;
    FileWatcher watcher_;
    QTimer timer_;
    std::map<FileId, Followed> followed_;
    bool problemTold_ = false;
};

}  // namespace zentro
