#include "desktop/disk.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <thread>

namespace zentro {

namespace {

using std::chrono::milliseconds;

/// A disk that has to start turning, or a machine that is busy, is no disk that hangs.
constexpr milliseconds kMoment{300};
/// While one folder hangs the others of its drive may, too: the moments must not add up.
constexpr milliseconds kShortMoment{50};
constexpr milliseconds kIdleTime{5000};  // of a thread

QString FolderOf(const QString& path) {
    return QDir::cleanPath(QFileInfo(path).path());
}

}  // namespace

struct Disk::Job {
    QString path;
    std::function<void()> work;
    bool isDone = false;
    bool isWanted = true;
};

/// What the threads work on; it lives as long as the last of them.
struct Disk::Shared {
    /// A folder and its thread.
    struct Lane {
        std::deque<std::shared_ptr<Job>> waiting;
        bool hangs = false;  ///< somebody has gone on without what is being done
    };

    static void Work(const std::shared_ptr<Shared>& shared, const QString& folder);
    std::shared_ptr<Job> Next(std::unique_lock<std::mutex>& lock, Lane& lane);
    void Finish(Lane& lane, Job& job);
    void NoteAnswer(Lane& lane);
    bool AnyHangs() const {
        return std::ranges::any_of(lanes, [](const auto& lane) { return lane.second.hangs; });
    }
    bool AnyAnswers() const {
        return std::ranges::any_of(lanes, [](const auto& lane) { return !lane.second.hangs; });
    }

    std::mutex mutex;
    std::condition_variable changed;
    std::map<QString, Lane> lanes;  ///< each has a thread
    Backend backend;
    Disk* disk = nullptr;  ///< null: it is gone
};

void Disk::Shared::Work(const std::shared_ptr<Shared>& shared, const QString& folder) {
    std::unique_lock lock(shared->mutex);
    Lane& lane = shared->lanes.at(folder);
    while (const std::shared_ptr<Job> job = shared->Next(lock, lane)) {
        lock.unlock();
        if (shared->backend) shared->backend(job->path);
        job->work();
        job->work = {};
        lock.lock();
        shared->Finish(lane, *job);
    }
    shared->lanes.erase(folder);
    shared->changed.notify_all();
}

/// Null: there was nothing to do for a while.
std::shared_ptr<Disk::Job> Disk::Shared::Next(std::unique_lock<std::mutex>& lock, Lane& lane) {
    while (true) {
        changed.wait_for(lock, kIdleTime, [&] { return !lane.waiting.empty() || disk == nullptr; });
        if (lane.waiting.empty() || disk == nullptr) return nullptr;
        std::shared_ptr<Job> job = std::move(lane.waiting.front());
        lane.waiting.pop_front();
        if (job->isWanted) return job;
        NoteAnswer(lane);
    }
}

void Disk::Shared::Finish(Lane& lane, Job& job) {
    job.isDone = true;
    NoteAnswer(lane);
    changed.notify_all();
}

void Disk::Shared::NoteAnswer(Lane& lane) {
    if (std::exchange(lane.hangs, false) && disk != nullptr)
        QMetaObject::invokeMethod(disk, "Answered", Qt::QueuedConnection);
}

Disk::Disk(Backend backend, QObject* parent)
    : QObject(parent), shared_(std::make_shared<Shared>()) {
    shared_->backend = std::move(backend);
    shared_->disk = this;
}

Disk::~Disk() {
    std::unique_lock lock(shared_->mutex);
    shared_->disk = nullptr;
    shared_->changed.notify_all();
    shared_->changed.wait_for(lock, kMoment, [this] { return !shared_->AnyAnswers(); });
}

bool Disk::Do(const QString& path, Patience patience, std::function<void()> work) {
    const QString folder = FolderOf(path);
    const auto job = std::make_shared<Job>();
    job->path = path;
    job->work = std::move(work);
    const std::shared_ptr<Shared> shared = shared_;  // the disk may go while it is waited for
    std::unique_lock lock(shared->mutex);
    const bool hasThread = shared->lanes.contains(folder);
    Shared::Lane& lane = shared->lanes[folder];
    const bool hangs = lane.hangs;
    if (hangs && patience == Patience::Short) return false;
    lane.waiting.push_back(job);
    if (!hasThread) std::thread(&Shared::Work, shared, folder).detach();
    shared->changed.notify_all();
    const bool isShort = patience == Patience::Short && shared->AnyHangs();
    const milliseconds moment = hangs ? milliseconds{0} : isShort ? kShortMoment : kMoment;
    if (shared->changed.wait_for(lock, moment, [&] { return job->isDone; })) return true;
    lane.hangs = true;  // it has a job, so it is still there
    if (patience == Patience::WhileWanted) {
        lock.unlock();
        WaitAsLongAsWanted(job);
        lock.lock();
    }
    job->isWanted = false;
    return job->isDone;
}

void Disk::WaitAsLongAsWanted(const std::shared_ptr<Job>& job) {
    const std::shared_ptr<Shared> shared = shared_;
    if (waiter_) {
        const Waiter waiter = waiter_;
        return waiter(job->path, [shared, job] {
            const std::scoped_lock lock(shared->mutex);
            return job->isDone;
        });
    }
    std::unique_lock lock(shared->mutex);
    shared->changed.wait(lock, [&] { return job->isDone; });
}

}  // namespace zentro
