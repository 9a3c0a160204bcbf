#pragma once

#include <QHash>
#include <QObject>
#include <QTimer>

#include "desktop/file_watcher.h"
#include "desktop/recovery_store.h"
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
    RecoveryKeeper(Workbench& workbench, SourceFiles& files, QObject* parent);
    ~RecoveryKeeper() override;

    /// Copies every changed text now.
    void KeepAll();
    /// Offers what runs of the program left that ended without saving, if there is any.
    void OfferUnsaved(QWidget* parent);
    /// Shows the copies of the file in front and takes one back.
    void ShowCopies(QWidget* parent);
    /// The program ends in order: nothing is offered again.
    void EndSession();

  private:
    void Follow(SourceWindow* window);
    void Forget(SourceWindow* window);
    void TakeBack(const UnsavedText& unsaved);
    void OfferReload(const QString& path);
    QString DocumentOf(const SourceWindow* window);
    void TellOnce(const QString& problem);

    Workbench& workbench_;
    SourceFiles& files_;
    RecoveryStore store_;
    FileWatcher watcher_;
    QTimer timer_;
    QHash<const SourceWindow*, QString> documents_;
    int lastDocument_ = 0;
    bool problemTold_ = false;
};

}  // namespace zentro
