#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <cstdint>
#include <functional>
#include <memory>

class QString;

namespace zentro {

/// What comes after the last moment.
enum class Ending : std::uint8_t {
    Likely,  ///< the user logs out, which can still be called off
    Certain,
};

/// Calls a function when the program is about to be ended from outside: by a signal (SIGTERM,
/// SIGHUP, SIGINT), by the end of the session, by the loss of the display, or by an exception that
/// nobody catches. After a signal and at the end of the session the program leaves its event loop,
/// and nobody is asked. There is one at a time.
class LastMoment : public QObject {
    Q_OBJECT

  public:
    /// The function is called in the thread of this object, that of the windows; it must not show
    /// anything or wait for the user.
    using Use = std::function<void(Ending)>;
    explicit LastMoment(Use use);
    ~LastMoment() override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void WatchSignals();
    void TakeSignal();
    void PrepareForLogOut();

    /// From any thread, after which Qt or the system ends the process at once.
    static void UseNow();
    static void HandleMessage(QtMsgType type, const QMessageLogContext& context,
                              const QString& text);

    Use use_;
    std::unique_ptr<QSocketNotifier> signalCame_;
    QtMessageHandler previousHandler_ = nullptr;
    bool logsOut_ = false;
};

}  // namespace zentro
