#include "desktop/board_state.h"

#include <QFileInfo>
#include <utility>

#include "comms/debug_address.h"
#include "comms/virtual_board_link.h"
#include "faults/words_of_program.h"

namespace zentro {

namespace {

bool IsVirtualBoardPort(const QString& portName) {
    return portName.compare(kVirtualBoardPort, Qt::CaseInsensitive) == 0;
}

std::optional<std::uint16_t> AsAddress(std::uint32_t address) {
    if (address > 0xFFFF) return std::nullopt;
    return static_cast<std::uint16_t>(address);
}

}  // namespace

BoardState::BoardState(TerminalSession::MessageSink showMessage, PortLister listPorts,
                       QObject* parent)
    : QObject(parent), showMessage_(std::move(showMessage)), listPorts_(std::move(listPorts)) {}

BoardState::~BoardState() {
    blockSignals(true);  // who listens may be gone
    session_.reset();
}

VirtualBoardHost& BoardState::VirtualBoard() {
    if (host_ == nullptr) {
        host_ = std::make_unique<VirtualBoardHost>();
        connect(host_.get(), &VirtualBoardHost::Changed, this, &BoardState::FollowVirtualBoard);
    }
    return *host_;
}

Link& BoardState::LinkFor(const QString& portName) {
    if (IsVirtualBoardPort(portName)) return VirtualBoard().Link();
    return serialLink_;
}

TerminalSession& BoardState::Begin(const QString& portName) {
    End();
    if (portName != portName_ || IsVirtualBoardPort(portName)) portProgram_ = {};
    portName_ = portName;
    const auto listPorts = [this] {
        std::vector<PortDescription> ports = listPorts_();
        if (Kind() == BoardKind::Virtual) ports.push_back({kVirtualBoardPort, "Virtual board", {}});
        return ports;
    };
    session_ = std::make_unique<TerminalSession>(LinkFor(portName), showMessage_, listPorts);
    ConnectSession();
    emit Changed();
    return *session_;
}

void BoardState::ConnectSession() {
    TerminalSession* session = session_.get();
    connect(session, &TerminalSession::ConnectionInitOK, this, [this] {
        connected_ = true;
        emit Changed();
    });
    connect(session, &TerminalSession::ConnectionLost, this, &BoardState::Changed);
    connect(session, &TerminalSession::SyncToCodeLine, this, &BoardState::AddressChosen);
    connect(session, &TerminalSession::ScreenChanged, this, &BoardState::FollowScreen);
    connect(session, &TerminalSession::DownloadProgress, this,
            [this](double fraction, int linesSent) {
                emit SendingProgress(fraction, linesSent);
                // All is sent; what the board makes of it is still to come.
                if (!IsSending()) emit Changed();
            });
    connect(session, &TerminalSession::DownloadFinished, this, &BoardState::FinishSending);
    connect(session, &TerminalSession::BrokenLoadEnded, this, &BoardState::FollowBrokenLoad);
    // The session is in the middle of its own work when it tells this.
    connect(session, &TerminalSession::FormClosing, this, &BoardState::ConversationOver,
            Qt::QueuedConnection);
}

void BoardState::End() {
    if (session_ == nullptr) return;
    session_->disconnect(this);
    session_.reset();
    connected_ = false;
    debugAddress_.reset();
    HoldIfUnseen();
    emit Changed();
}

ConnectionState BoardState::Connection() const {
    if (session_ == nullptr || !connected_) return ConnectionState::None;
    return session_->IsConnected() ? ConnectionState::Connected : ConnectionState::Lost;
}

BoardKind BoardState::Kind() const {
    if (session_ != nullptr)
        return IsVirtualBoardPort(portName_) ? BoardKind::Virtual : BoardKind::Port;
    return virtualBoardSeen_ ? BoardKind::Virtual : BoardKind::None;
}

void BoardState::SetVirtualBoardSeen(bool seen) {
    virtualBoardSeen_ = seen;
    HoldIfUnseen();
    emit Changed();
}

void BoardState::HoldIfUnseen() {
    if (host_ == nullptr || Kind() == BoardKind::Virtual) return;
    if (host_->State().processor.running) host_->Pause();
}

HeldProgram& BoardState::ProgramOf(BoardKind kind) {
    return kind == BoardKind::Virtual ? virtualProgram_ : portProgram_;
}

const HeldProgram& BoardState::Program() const {
    return Kind() == BoardKind::Virtual ? virtualProgram_ : portProgram_;
}

void BoardState::Send(const QString& objectFile, std::shared_ptr<const CompiledProgram> compiled,
                      bool runs, std::optional<std::string> text) {
    if (session_ == nullptr || IsSending()) return;
    const QString name = compiled == nullptr ? QFileInfo(objectFile).fileName() : compiled->name;
    BeginSending(name, std::move(compiled), runs);
    session_->DownloadSource(objectFile.toStdString(), std::move(text));
    emit Changed();
}

void BoardState::BeginSending(const QString& name, std::shared_ptr<const CompiledProgram> compiled,
                              bool runs) {
    sending_ = {HeldProgram::Extent::Whole, name, std::move(compiled)};
    before_ = std::exchange(ProgramOf(Kind()), {HeldProgram::Extent::Half, name, nullptr});
    runsAfterwards_ = runs;
}

void BoardState::Run(std::shared_ptr<const CompiledProgram> compiled) {
    CancelSending();
    if (Kind() == BoardKind::Virtual) {
        if (!Load(std::move(compiled))) return;
        VirtualBoard().Run();
        emit Changed();
        return;
    }
    if (Connection() != ConnectionState::Connected) return;
    BeginSending(compiled->name, compiled, true);
    session_->DownloadSource(compiled->objectFile.toStdString(), compiled->objectText);
    emit Changed();
}

bool BoardState::Load(std::shared_ptr<const CompiledProgram> compiled) {
    CancelSending();
    VirtualBoard().LeaveReplay();
    VirtualBoard().Reset();  // what an earlier program has switched on is not this one's
    const std::string problem = VirtualBoard().LoadProgram(compiled->objectText);
    if (problem.empty()) {
        virtualProgram_ = {HeldProgram::Extent::Whole, compiled->name, std::move(compiled)};
    } else {
        virtualProgram_ = {HeldProgram::Extent::None, {}, nullptr};
        showMessage_(problem);
    }
    NameAddresses();
    emit Changed();
    return problem.empty();
}

void BoardState::Replay(Recording recording, const QString& name,
                        std::shared_ptr<const CompiledProgram> compiled) {
    CancelSending();
    VirtualBoard().Replay(std::move(recording));
    virtualProgram_ = {HeldProgram::Extent::Whole, name, std::move(compiled)};
    NameAddresses();
    emit Changed();
}

void BoardState::CancelSending() {
    runsAfterwards_ = false;
    if (session_ != nullptr) session_->CancelDownload();
}

void BoardState::FinishSending(const DownloadResult& result) {
    const bool runs = std::exchange(runsAfterwards_, false);
    HeldProgram sent = std::exchange(sending_, {});
    HeldProgram before = std::exchange(before_, {});
    HeldProgram& program = ProgramOf(Kind());
    // A board that says nothing got all of it.
    if (result.IsWhole() || result.outcome == DownloadOutcome::NoVerdict) {
        program = std::move(sent);
    } else if (!result.replacedProgram) {
        program = std::move(before);
    } else if (!result.MayLeavePart()) {
        program = {HeldProgram::Extent::None, {}, nullptr};
    }
    if (Kind() == BoardKind::Virtual) NameAddresses();
    if (runs && result.IsWhole() && session_->IsConnected()) session_->SendCmd("G\r");
    emit Changed();
    emit SendingOver(result);
}

/// The board has said what it holds of a load that did not come to its end.
void BoardState::FollowBrokenLoad(const DownloadResult& result) {
    HeldProgram& program = ProgramOf(Kind());
    if (!result.MayLeavePart()) {
        program = {HeldProgram::Extent::None, {}, nullptr};
    } else if (program.extent != HeldProgram::Extent::Half) {
        program = {HeldProgram::Extent::Half, tr("a program"), nullptr};
    }
    if (Kind() == BoardKind::Virtual) NameAddresses();
    emit Changed();
}

/// What faults call the things of the program.
void BoardState::NameAddresses() {
    const auto& compiled = virtualProgram_.compiled;
    host_->SetWords(compiled == nullptr ? ProgramWords() : WordsOf(*compiled->compilation));
}

std::string BoardState::ReadNow(std::uint32_t address, std::size_t count) {
    return VirtualBoard().ReadMemory(address, count);
}

void BoardState::FollowVirtualBoard() {
    // Somebody types a program at the board's loader.
    if (host_->State().serial.loader.active && !IsSending()) {
        virtualProgram_ = {};
        NameAddresses();
    }
    emit Changed();
}

/// While a board on a port is stepped, its screen tells where it stands.
void BoardState::FollowScreen() {
    const auto address =
        session_->IsDebugging() ? DebugAddressOn(session_->Screen().Text()) : std::nullopt;
    if (address == debugAddress_) return;
    debugAddress_ = address;
    emit Changed();
}

BoardActivity BoardState::Activity() const {
    if (Kind() == BoardKind::Virtual && host_ != nullptr) return VirtualActivity();
    if (debugAddress_) return {BoardActivity::State::Held, debugAddress_, {}};
    return {};
}

BoardActivity BoardState::VirtualActivity() const {
    using State = BoardActivity::State;
    const Processor& processor = host_->State().processor;
    if (processor.running) {
        const bool held = host_->IsPaused() || processor.debug == DebugState::AtPrompt;
        const bool slow = host_->Speed().kind == BoardSpeed::Kind::SlowMotion;
        const bool waits = processor.wait.kind != Wait::Kind::None;
        BoardActivity activity;
        activity.state = held ? State::Held : waits ? State::Waiting : State::Running;
        const auto address = AsAddress(WhereItStands(host_->State()));
        (held || slow ? activity.address : activity.passing) = address;
        return activity;
    }
    if (processor.end == EndReason::Fault) {
        const FaultReport report = DescribeFault(host_->State(), host_->Words());
        return {State::Fault, AsAddress(report.address),
                QString::fromStdString(report.WholeText())};
    }
    if (processor.end != EndReason::None) return {State::Ended, {}, {}};
    return {host_->HasProgram() ? State::Ready : State::NoProgram, {}, {}};
}

}  // namespace zentro
