#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace zentro {

/// Work that may take as long as a disk does, done one piece after the other by a thread of its
/// own.
class WorkQueue {
  public:
    using Work = std::function<void()>;

    WorkQueue();
    /// Everything that was added is done first.
    ~WorkQueue();
    WorkQueue(const WorkQueue&) = delete;
    WorkQueue& operator=(const WorkQueue&) = delete;

    /// The work runs in the other thread; it must not throw.
    void Add(Work work);
    /// Returns when everything that was added is done. Not for use by the work itself.
    void Wait();
    bool IsBusy();

  private:
    void Run();

    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<Work> waiting_;  ///< the first one may be running
    bool isEnding_ = false;
    std::thread thread_;  // the last: it uses the others
};

}  // namespace zentro
