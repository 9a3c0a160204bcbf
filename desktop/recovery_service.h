#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <mutex>
#include <vector>

#include "desktop/recovery_store.h"
#include "desktop/work_queue.h"

namespace zentro {

/// The recovery copies of this run of the program, written by a thread of their own, so that nobody
/// who types waits for a disk. What is asked for is done in the order in which it was asked; see
/// RecoveryStore for what each does. All calls come from the thread that made the service.
class RecoveryService : public QObject {
    Q_OBJECT

  public:
    explicit RecoveryService(QString folder, QObject* parent = nullptr);
    /// What was asked for is done first.
    ~RecoveryService() override;

    // These return at once.
    void Keep(const QString& document, const QString& pathOrTitle, const QString& text);
    void Forget(const QString& document);
    void Restore(const UnsavedText& unsaved, const QString& document, const QString& presentText);
    void Discard(const UnsavedText& unsaved);

    // These wait until what was asked for before is done.
    std::vector<UnsavedText> Unsaved();
    std::vector<RecoveryCopy> Copies(const QString& document, const QString& pathOrTitle);

    /// Something still waits for the disk.
    bool IsBusy() { return queue_.IsBusy(); }

    /// Waits until everything that was asked for is on the disk. Returns the message for the user
    /// when some of it failed that Finished has not told of yet, and then never will; empty
    /// otherwise.
    QString Flush();

    /// Flush for a program that is ended from outside: whatever is asked for later is not done, so
    /// that windows which close on the way out cannot undo what was kept.
    QString FlushAndStop();

  signals:
    /// A Keep or a Restore was done. The message for the user when it failed, empty otherwise.
    void Finished(const QString& problem);

  private:
    void Add(WorkQueue::Work work);
    void Report(const QString& problem);
    void Tell();
    QStringList TakeUntold();

    RecoveryStore store_;  ///< used by the other thread alone while it is busy
    std::mutex untoldMutex_;
    QStringList untold_;  ///< how pieces of work ended
    bool isStopped_ = false;
    WorkQueue queue_;  // the last: its work uses the others
};

}  // namespace zentro
