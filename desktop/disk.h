#pragma once

#include <QObject>
#include <QString>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

namespace zentro {

/// How long somebody waits who asks the disk.
enum class Patience : std::uint8_t {
    Short,        ///< a moment: for what nobody has asked for, which goes without then
    WhileWanted,  ///< until the user has had enough
};

/// What is said of a file whose disk did not answer in time.
inline constexpr const char* kNoAnswer = "Its disk or network does not answer";

/// Work on files that users name. A network, a file system that somebody has stopped or a pipe may
/// keep it waiting for ever, so it is done by other threads, and whoever asks goes on without the
/// answer. What is asked about the files of one folder is done in the order in which it was asked.
/// All calls come from the thread that made the disk.
class Disk : public QObject {
    Q_OBJECT

  public:
    /// Tells the user that the path is waited for and lets the windows live meanwhile; returns when
    /// the work is done or the user has had enough.
    using Waiter = std::function<void(const QString& path, const std::function<bool()>& isDone)>;
    /// What every piece of work begins with, in its own thread: for tests of disks that hang.
    using Backend = std::function<void(const QString& path)>;

    explicit Disk(Backend backend = {}, QObject* parent = nullptr);
    /// Leaves work that hangs to its threads.
    ~Disk() override;

    /// Without one nobody can have had enough.
    void SetWaiter(Waiter waiter) { waiter_ = std::move(waiter); }

    /// Has the work done, which may outlive the call: it owns all that it uses, and must not throw.
    /// Returns what it returns; nothing when that was not waited for. Work that has begun goes on
    /// then, other work is not done any more.
    template <typename Work>
    std::optional<std::invoke_result_t<Work>> Ask(const QString& path, Patience patience,
                                                  Work work) {
        auto answer = std::make_shared<std::optional<std::invoke_result_t<Work>>>();
        const bool isDone = Do(path, patience, [answer, work = std::move(work)]() mutable {
            answer->emplace(work());
        });
        if (!isDone) return std::nullopt;
        return std::move(*answer);
    }

  signals:
    /// Some work that nobody waited for any longer is done: who went without may ask again.
    void Answered();

  private:
    struct Shared;
    struct Job;

    bool Do(const QString& path, Patience patience, std::function<void()> work);
    void WaitAsLongAsWanted(const std::shared_ptr<Job>& job);

    Waiter waiter_;
    std::shared_ptr<Shared> shared_;  ///< with the threads
};

}  // namespace zentro
