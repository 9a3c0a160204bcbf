#include "comms/variable_reader.h"

#include <utility>

#include "model/address.h"

namespace zentro {

namespace {

/// "M001A" and CR.
std::string MemoryReadCommand(std::uint32_t address) {
    return 'M' + AddressDigits(address) + '\r';
}

/// Whether the reply shows the memory of another place than the one that was asked for.
bool IsOfAnotherPlace(std::string_view reply, std::uint32_t address) {
    const std::size_t bracket = reply.find(']');
    if (bracket == std::string_view::npos || bracket <= kAddressDigits) return false;
    if (reply[bracket - kAddressDigits - 1] != '[') return false;
    const auto shown = ParseAddress(reply.substr(bracket - kAddressDigits, kAddressDigits));
    return shown && *shown != static_cast<std::uint16_t>(address);
}

}  // namespace

VariableReader::VariableReader(MessageSink showMessage, std::chrono::milliseconds replyTimeLimit)
    : showMessage_(std::move(showMessage)) {
    timeLimit_.setSingleShot(true);
    timeLimit_.setInterval(replyTimeLimit);
    connect(&timeLimit_, &QTimer::timeout, this, &VariableReader::GiveUp);
}

VariableReader::~VariableReader() {
    SetTerminal(nullptr);
}

void VariableReader::SetTerminal(TerminalSession* terminal) {
    if (IsReading()) Finish(false);
    if (terminal_ != nullptr) terminal_->disconnect(this);
    terminal_ = terminal;
    expectsLateReplies_ = false;
    if (terminal == nullptr) return;
    const auto forget = [this] { SetTerminal(nullptr); };
    connect(terminal, &TerminalSession::CharsReceived, this, &VariableReader::TakeReply);
    connect(terminal, &TerminalSession::ConnectionLost, this, forget);
    connect(terminal, &TerminalSession::FormClosing, this, forget);
    connect(terminal, &QObject::destroyed, this, forget);
}

bool VariableReader::LoadVariableList(std::vector<DebugVariable> variables) {
    if (IsReading()) Finish(false);
    variables_ = std::move(variables);
    if (!variables_.empty()) return true;
    showMessage_("No Variable Information found. Have you compiled the program?");
    return false;
}

void VariableReader::RefreshVariables() {
    if (IsReading()) return;
    if (terminal_ == nullptr) {
        showMessage_("Terminal Window is not open");
        return;
    }
    if (!terminal_->IsDebugging()) {
        showMessage_("Note: KineTron is not in debug mode. Variable Values cannot be gathered");
        return;
    }
    if (variables_.empty()) return;
    terminal_->SetScreenOff(true);
    currentVariableIndex_ = 1;
    emit ReadingStarted();
    RequestCurrent();
}

/// Anything can come of sending, even the end of the read.
void VariableReader::RequestCurrent() {
    timeLimit_.start();
    terminal_->SendCmd(MemoryReadCommand(variables_[currentVariableIndex_ - 1].address));
}

void VariableReader::TakeReply(const std::string& text) {
    if (!IsReading()) return;
    replyBuffer_ += text;
    if (expectsLateReplies_) DropLateReplies();
    if (replyBuffer_.find(kReplyEndMarker) == std::string::npos) return;
    DebugVariable& variable = variables_[currentVariableIndex_ - 1];
    variable.debugValue = FormatDebugValue(replyBuffer_, variable.type);
    variable.bytes = ReplyBytes(replyBuffer_);
    replyBuffer_.clear();
    if (currentVariableIndex_ == variables_.size()) {
        Finish(true);
        return;
    }
    ++currentVariableIndex_;
    RequestCurrent();
}

/// Or the values of a slow board would end up at the wrong variables.
void VariableReader::DropLateReplies() {
    for (std::size_t end = replyBuffer_.find(kReplyEndMarker); end != std::string::npos;
         end = replyBuffer_.find(kReplyEndMarker)) {
        const std::string_view reply = std::string_view(replyBuffer_).substr(0, end);
        if (!IsOfAnotherPlace(reply, variables_[currentVariableIndex_ - 1].address)) return;
        replyBuffer_.erase(0, end + kReplyEndMarker.size());
    }
}

void VariableReader::Finish(bool complete) {
    timeLimit_.stop();
    currentVariableIndex_ = 0;
    expectsLateReplies_ = !complete;
    const std::string unread = std::exchange(replyBuffer_, {});
    if (terminal_ != nullptr) {
        terminal_->SetScreenOff(false);
        // The board may have said something else than the answer.
        if (!unread.empty()) terminal_->WriteToScreen(unread);
    }
    emit ReadingFinished(complete);
}

void VariableReader::GiveUp() {
    Finish(false);
    showMessage_("KineTron does not answer. Variable Values cannot be gathered");
}

}  // namespace zentro
