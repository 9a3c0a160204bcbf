#include "desktop/work_queue.h"

#include <utility>

namespace zentro {

WorkQueue::WorkQueue() : thread_([this] { Run(); }) {}

WorkQueue::~WorkQueue() {
    {
        const std::scoped_lock lock(mutex_);
        isEnding_ = true;
    }
    changed_.notify_all();
    thread_.join();
}

void WorkQueue::Add(Work work) {
    {
        const std::scoped_lock lock(mutex_);
        waiting_.push_back(std::move(work));
    }
    changed_.notify_all();
}

void WorkQueue::Wait() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return waiting_.empty(); });
}

bool WorkQueue::IsBusy() {
    const std::scoped_lock lock(mutex_);
    return !waiting_.empty();
}

void WorkQueue::Run() {
    std::unique_lock lock(mutex_);
    while (true) {
        changed_.wait(lock, [this] { return isEnding_ || !waiting_.empty(); });
        if (waiting_.empty()) return;
        const Work work = std::move(waiting_.front());
        lock.unlock();
        work();
        lock.lock();
        waiting_.pop_front();
        changed_.notify_all();
    }
}

}  // namespace zentro
