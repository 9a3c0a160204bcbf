#include "comms/variable_reader.h"

#include <optional>
#include <string_view>
#include <utility>

#include "model/address.h"

namespace zentro {

namespace {

/// "M001A" and CR.
std::string MemoryReadCommand(std::uint32_t address) {
    return 'M' + AddressDigits(address) + '\r';
}

/// The line of a reply that shows memory, or an instruction, from an address on.
struct ShownPlace {
    std::size_t position;
    std::uint16_t address;
};

bool IsLineEnd(char character) {
    return character == '\r' || character == '\n';
}

/// The next line that begins with "[001A]".
std::optional<ShownPlace> FindPlace(std::string_view reply, std::size_t from) {
    for (std::size_t bracket = reply.find('[', from); bracket != std::string_view::npos;
         bracket = reply.find('[', bracket + 1)) {
        const bool beginsLine = bracket == 0 || IsLineEnd(reply[bracket - 1]);
        const std::size_t end = bracket + kAddressDigits + 1;
        if (!beginsLine || end >= reply.size() || reply[end] != ']') continue;
        const auto address = ParseAddress(reply.substr(bracket + 1, kAddressDigits));
        if (address) return ShownPlace{bracket, *address};
    }
    return std::nullopt;
}

/// Whether a reply, without its end marker, says nothing: a prompt that comes late or twice.
bool IsPromptAlone(std::string_view reply) {
    constexpr std::string_view kArrow = "->";  // belongs to the marker
    while (!reply.empty() && IsLineEnd(reply.front()))
        reply.remove_prefix(1);
    return reply == kDebugPrompt.substr(0, kDebugPrompt.size() - kArrow.size());
}

/// The part of a reply that shows the memory of this place; all of it when it names no place at
/// all, and nothing when it names another one only or none but says nothing else.
std::string_view PartOfPlace(std::string_view reply, std::uint32_t address) {
    const std::optional<ShownPlace> first = FindPlace(reply, 0);
    if (!first) return IsPromptAlone(reply) ? std::string_view() : reply;
    for (std::optional<ShownPlace> place = first; place;
         place = FindPlace(reply, place->position + 1)) {
        if (place->address == static_cast<std::uint16_t>(address))
            return reply.substr(place->position);
    }
    return {};
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
    // What the board has said so far is for the screen, and may end its debug mode.
    terminal_->HearArrived();
    if (terminal_ == nullptr) return;  // it was lost just now, and is forgotten
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
    DebugVariable& variable = variables_[currentVariableIndex_ - 1];
    const std::optional<std::string> reply = TakeReplyOf(variable.address);
    if (!reply) return;
    variable.debugValue = FormatDebugValue(*reply, variable.type);
    variable.bytes = ReplyBytes(*reply);
    variable.readableBytes = CountReadablePairs(*reply);
    replyBuffer_.clear();
    if (currentVariableIndex_ == variables_.size()) {
        Finish(true);
        return;
    }
    ++currentVariableIndex_;
    RequestCurrent();
}

/// The first whole reply of this place. Those of others go: the late answers of a slow board, or
/// the prompt after a step, which would end up as the variable's value.
std::optional<std::string> VariableReader::TakeReplyOf(std::uint32_t address) {
    for (std::size_t end = replyBuffer_.find(kReplyEndMarker); end != std::string::npos;
         end = replyBuffer_.find(kReplyEndMarker)) {
        const std::string_view part =
            PartOfPlace(std::string_view(replyBuffer_).substr(0, end), address);
        // The reply goes on to the end of the prompt.
        if (!part.empty() || end == 0)
            return replyBuffer_.substr(end - part.size(), part.size() + kReplyEndMarker.size());
        replyBuffer_.erase(0, end + kReplyEndMarker.size());
    }
    return std::nullopt;
}

void VariableReader::Finish(bool complete) {
    timeLimit_.stop();
    currentVariableIndex_ = 0;
    const std::string unread = std::exchange(replyBuffer_, {});
    if (terminal_ != nullptr) {
        terminal_->SetScreenOff(false);
        // The board may have said something else than the answer.
        if (!unread.empty()) terminal_->WriteToScreen(unread);
    }
    emit ReadingFinished(complete);
}

void VariableReader::GiveUp() {
    const bool isShown =
        FindPlace(replyBuffer_, 0) &&
        !PartOfPlace(replyBuffer_, variables_[currentVariableIndex_ - 1].address).empty();
    Finish(false);
    showMessage_(isShown
                     ? "The program waits, and KineTron shows no debug prompt until it goes on. "
                       "Variable Values can be gathered then"
                     : "KineTron does not answer. Variable Values cannot be gathered");
}

}  // namespace zentro
