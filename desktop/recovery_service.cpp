#include "desktop/recovery_service.h"

#include <QMetaObject>
#include <utility>

namespace zentro {

RecoveryService::RecoveryService(QString folder, QObject* parent)
    : QObject(parent), store_(std::move(folder)) {}

RecoveryService::~RecoveryService() = default;

void RecoveryService::Add(WorkQueue::Work work) {
    if (!isStopped_) queue_.Add(std::move(work));
}

/// Called by the other thread.
void RecoveryService::Report(const QString& problem) {
    {
        const std::scoped_lock lock(untoldMutex_);
        untold_ += problem;
    }
    QMetaObject::invokeMethod(this, &RecoveryService::Tell, Qt::QueuedConnection);
}

QStringList RecoveryService::TakeUntold() {
    const std::scoped_lock lock(untoldMutex_);
    return std::exchange(untold_, {});
}

void RecoveryService::Tell() {
    for (const QString& problem : TakeUntold()) {
        emit Finished(problem);
    }
}

void RecoveryService::Keep(const QString& document, const QString& pathOrTitle,
                           const QString& text) {
    Add([=, this] { Report(store_.Keep(document, pathOrTitle, text)); });
}

void RecoveryService::Forget(const QString& document) {
    Add([=, this] { store_.Forget(document); });
}

void RecoveryService::Restore(const UnsavedText& unsaved, const QString& document,
                              const QString& presentText) {
    Add([=, this] { Report(store_.Restore(unsaved, document, presentText)); });
}

void RecoveryService::Discard(const UnsavedText& unsaved) {
    Add([=, this] { store_.Discard(unsaved); });
}

std::vector<UnsavedText> RecoveryService::Unsaved() {
    queue_.Wait();
    return store_.Unsaved();
}

std::vector<RecoveryCopy> RecoveryService::Copies(const QString& document,
                                                  const QString& pathOrTitle) {
    queue_.Wait();
    return store_.Copies(document, pathOrTitle);
}

QString RecoveryService::Flush() {
    queue_.Wait();
    QStringList problems = TakeUntold();
    problems.removeAll(QString());
    return problems.isEmpty() ? QString() : problems.last();
}

QString RecoveryService::FlushAndStop() {
    isStopped_ = true;
    return Flush();
}

}  // namespace zentro
