#pragma once

#include <QString>
#include <condition_variable>
#include <memory>
#include <mutex>

#include "desktop/disk.h"

namespace zentro {

/// The backend of a disk on which one folder hangs, as on a network that is gone, while the test
/// wants it.
class HangingFolder {
  public:
    explicit HangingFolder(QString folder) { state_->folder = std::move(folder); }
    ~HangingFolder() { Answer(); }
    HangingFolder(const HangingFolder&) = delete;
    HangingFolder& operator=(const HangingFolder&) = delete;

    Disk::Backend Backend() const {
        return [state = state_](const QString& path) {
            std::unique_lock lock(state->mutex);
            if (!path.startsWith(state->folder)) return;
            state->changed.wait(lock, [&] { return !state->hangs; });
        };
    }
    void Hang() { Set(true); }
    void Answer() { Set(false); }

  private:
    /// The threads of the disk may outlive the test.
    struct State {
        std::mutex mutex;
        std::condition_variable changed;
        QString folder;
        bool hangs = false;
    };

    void Set(bool hangs) {
        const std::scoped_lock lock(state_->mutex);
        state_->hangs = hangs;
        state_->changed.notify_all();
    }

    std::shared_ptr<State> state_ = std::make_shared<State>();
};

}  // namespace zentro
