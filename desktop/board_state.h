#pragma once

#include <QObject>
#include <QString>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "comms/port_list.h"
#include "comms/serial_link.h"
#include "comms/terminal_session.h"
#include "desktop/compile_service.h"
#include "desktop/virtual_board_host.h"

namespace zentro {

/// Which board the windows are about.
enum class BoardKind : std::uint8_t { None, Port, Virtual };

enum class ConnectionState : std::uint8_t { None, Connected, Lost };

/// What a board holds, as far as it is known.
struct HeldProgram {
    enum class Extent : std::uint8_t {
        Unknown,  ///< it came from somewhere else
        None,
        Half,  ///< a download did not come to its end
        Whole,
    };

    Extent extent = Extent::Unknown;
    QString name;  ///< of the source or object file; empty: unknown
    std::shared_ptr<const CompiledProgram> compiled;  ///< null: it was compiled by another run
};

/// What a board is doing.
struct BoardActivity {
    enum class State : std::uint8_t {
        Unknown,  ///< a board on a port does not tell
        NoProgram,
        Ready,  ///< loaded and not started yet
        Running,
        Waiting,  ///< for time or an event
        Held,     ///< before the instruction at the address
        Ended,
        Fault,  ///< by the instruction at the address
    };

    State state = State::Unknown;
    /// Where it stands. Of a running program only while it goes slowly enough to be followed.
    std::optional<std::uint16_t> address;
    QString text;  ///< of a fault, sentences
    /// Of a program at full pace, where it was seen last.
    std::optional<std::uint16_t> passing = {};

    bool operator==(const BoardActivity&) const = default;
};

/// The connection to a board, the program on it and what it does: the one place that knows. Windows
/// read it and are told with Changed that something is different, at most 60 times a second.
class BoardState : public QObject {
    Q_OBJECT

  public:
    explicit BoardState(TerminalSession::MessageSink showMessage, PortLister listPorts = ListPorts,
                        QObject* parent = nullptr);
    ~BoardState() override;

    /// Ends the conversation that is on and makes one for the port, or for the virtual board by the
    /// name of its port. It is opened by the session.
    TerminalSession& Begin(const QString& portName);
    /// Ends the conversation; windows that work with the session are gone before.
    void End();
    /// Null: none.
    TerminalSession* Session() const { return session_.get(); }

    ConnectionState Connection() const;
    QString PortName() const { return portName_; }
    /// The board at the other end of the conversation; without one the virtual board if it is seen.
    BoardKind Kind() const;

    /// Made when it is asked for first.
    VirtualBoardHost& VirtualBoard();
    /// Null: nobody has asked for it yet.
    const VirtualBoardHost* VirtualBoardIfMade() const { return host_.get(); }
    bool HasVirtualBoard() const { return host_ != nullptr; }
    /// Whether a window shows the virtual board. A board that neither a window nor a conversation
    /// shows is held.
    void SetVirtualBoardSeen(bool seen);

    const HeldProgram& Program() const;
    /// What the virtual board holds, whichever board the windows are about.
    const HeldProgram& VirtualProgram() const { return virtualProgram_; }
    BoardActivity Activity() const;

    /// Sends an object file to the connected board, and when that was whole and `runs`, starts it.
    /// Of a program that was compiled by this run of ours the board can name what it does.
    void Send(const QString& objectFile, std::shared_ptr<const CompiledProgram> compiled, bool runs,
              std::optional<std::string> text = std::nullopt);
    /// Brings a program to the board and starts it: at once on the virtual board, which it is
    /// unless a port is connected; through a download on a port. The object code need not be in a
    /// file.
    void Run(std::shared_ptr<const CompiledProgram> compiled);
    /// Brings a program to the virtual board without starting it. False, which has been told: it
    /// cannot be loaded.
    bool Load(std::shared_ptr<const CompiledProgram> compiled);
    /// Puts the virtual board at the beginning of a run that was recorded, held there. `compiled`
    /// is the program of the recording if it is known; its world lies on the floor already.
    void Replay(Recording recording, const QString& name,
                std::shared_ptr<const CompiledProgram> compiled);
    void CancelSending();
    bool IsSending() const { return session_ != nullptr && session_->IsDownloading(); }

    /// Whether memory can be looked up at once; otherwise the session has to ask for it.
    bool CanReadNow() const { return Kind() == BoardKind::Virtual; }
    std::string ReadNow(std::uint32_t address, std::size_t count);

  signals:
    void Changed();
    void SendingProgress(double fraction, int linesSent);
    /// What was sent has arrived or not, and Changed has told what the board holds now.
    void SendingOver(const zentro::DownloadResult& result);
    /// The user pointed at an address on the terminal's screen.
    void AddressChosen(std::uint16_t address);
    /// The conversation could not be opened, or its window is to close.
    void ConversationOver();

  private:
    Link& LinkFor(const QString& portName);
    void ConnectSession();
    void BeginSending(const QString& name, std::shared_ptr<const CompiledProgram> compiled,
                      bool runs);
    void FinishSending(const DownloadResult& result);
    void FollowBrokenLoad(const DownloadResult& result);
    HeldProgram& ProgramOf(BoardKind kind);
    void NameAddresses();
    void FollowVirtualBoard();
    void FollowScreen();
    void HoldIfUnseen();
    BoardActivity VirtualActivity() const;

    TerminalSession::MessageSink showMessage_;
    PortLister listPorts_;
    SerialLink serialLink_;
    std::unique_ptr<VirtualBoardHost> host_;
    std::unique_ptr<TerminalSession> session_;
    QString portName_;
    bool connected_ = false;
    bool virtualBoardSeen_ = false;
    HeldProgram portProgram_;
    HeldProgram virtualProgram_{HeldProgram::Extent::None, {}, nullptr};
    HeldProgram sending_;  ///< what the board holds when all of it has arrived
    HeldProgram before_;   ///< what it held until then
    bool runsAfterwards_ = false;
    std::optional<std::uint16_t> debugAddress_;  ///< of the instruction shown last in debug mode
};

}  // namespace zentro
