// Whatever a board answers to a memory read, in whatever pieces: every reply goes to its variable,
// the texts can be shown, and the terminal's screen is on again at the end.
#include <QCoreApplication>
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "comms/variable_reader.h"
#include "config/encoding.h"

namespace {

using namespace zentro;

void Expect(bool holds) {
    if (!holds) std::abort();
}

/// A line that takes everything and says nothing.
class SilentLink : public Link {
  public:
    std::size_t commands = 0;

    LinkOpening Open(const std::string&) override { return {1, {}}; }
    LineSetup ConfigureLine() override { return LineSetup::Done; }
    bool SaveTimeouts() override { return true; }
    bool MakeReadsReturnAtOnce() override { return true; }
    bool RestoreTimeouts() override { return true; }
    std::optional<std::string> Read(std::size_t) override { return std::string(); }
    std::size_t Write(std::string_view bytes) override {
        ++commands;
        return bytes.size();
    }
    void Flush() override {}
    bool Close() override { return true; }
};

constexpr DataType kTypes[] = {DataType::Byte, DataType::Word, DataType::Flag, DataType::Pointer,
                               DataType::Table};

void FormatReply(std::string_view reply) {
    std::vector<std::uint8_t> bytes = ReplyBytes(reply);
    Expect(bytes.size() <= kBytesInReply);
    bytes.resize(kBytesInReply);
    for (const DataType type : kTypes) {
        const std::string value = FormatDebugValue(reply, type);
        Expect(IsUtf8(value));
        Expect(value.empty() == (reply.find(']') == std::string_view::npos));
        if (value.empty() || type == DataType::Table) continue;
        const unsigned number = IsWordSized(type) ? bytes[0] * 256U + bytes[1] : bytes[0];
        Expect(value.starts_with(std::to_string(number) + "\t("));
    }
}

std::vector<DebugVariable> Variables() {
    std::vector<DebugVariable> variables(std::size(kTypes));
    for (std::size_t i = 0; i < variables.size(); ++i)
        variables[i].type = kTypes[i];
    return variables;
}

/// Whether every reply in the text is taken for an answer: none names another place than 0000, or
/// is a prompt alone.
bool IsAllAnswers(std::string_view text) {
    for (std::size_t at = text.find('['); at != std::string_view::npos;
         at = text.find('[', at + 1)) {
        const bool isEscape = at > 0 && text[at - 1] == '\x1b';
        if (!isEscape && !text.substr(at).starts_with("[0000]")) return false;
    }
    return text.find(kDebugPrompt) == std::string_view::npos;
}

/// The reply from the line on that names its place; all of it if none does.
std::string_view FromPlace(std::string_view reply) {
    constexpr std::string_view kPlace = "[0000]";
    for (std::size_t at = reply.find(kPlace); at != std::string_view::npos;
         at = reply.find(kPlace, at + 1)) {
        if (at == 0 || reply[at - 1] == '\r' || reply[at - 1] == '\n') return reply.substr(at);
    }
    return reply;
}

/// The values that the replies in the text stand for, in order.
std::vector<std::string> ExpectedValues(std::string_view text) {
    std::vector<std::string> values;
    while (values.size() < std::size(kTypes)) {
        const std::size_t marker = text.find(kReplyEndMarker);
        if (marker == std::string_view::npos) break;
        const std::size_t end = marker + kReplyEndMarker.size();
        values.push_back(FormatDebugValue(FromPlace(text.substr(0, end)), kTypes[values.size()]));
        text.remove_prefix(end);
    }
    return values;
}

struct Rig {
    SilentLink link;
    TerminalSession session{link, [](const std::string&) {},
                            [] { return std::vector<PortDescription>(); }};
    VariableReader reader{[](const std::string&) {}};
};

/// Reads with the text as what the board sends, in pieces of the size. Returns the values.
std::vector<std::string> Read(Rig& rig, std::string_view text, std::size_t pieceSize) {
    rig.reader.SetTerminal(&rig.session);
    rig.reader.LoadVariableList(Variables());
    rig.session.WriteToScreen(std::string("\x1b") + "c" + std::string(kDebugPrompt));
    rig.link.commands = 0;
    rig.reader.RefreshVariables();
    Expect(rig.link.commands == 1);
    for (std::size_t at = 0; at < text.size() && rig.reader.IsReading(); at += pieceSize) {
        Expect(rig.session.ScreenOff());
        emit rig.session.CharsReceived(std::string(text.substr(at, pieceSize)));
    }
    std::vector<std::string> values;
    const std::size_t read = rig.reader.IsReading() ? rig.link.commands - 1 : rig.link.commands;
    for (std::size_t i = 0; i < read; ++i)
        values.push_back(rig.reader.Variables()[i].debugValue);
    rig.reader.SetTerminal(nullptr);
    Expect(!rig.session.ScreenOff() && !rig.reader.IsReading());
    return values;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static int argc = 1;
    static char name[] = "variables_fuzz";
    static char* argv[] = {name, nullptr};
    static const QCoreApplication application(argc, argv);
    static Rig rig;
    if (size == 0) return 0;
    if (!rig.session.IsConnected()) rig.session.OpenConnection("port");
    const std::string_view text(reinterpret_cast<const char*>(data + 1), size - 1);
    FormatReply(text);
    const std::vector<std::string> values = Read(rig, text, 1);
    Expect(!IsAllAnswers(text) || values == ExpectedValues(text));
    Read(rig, text, std::max<std::size_t>(1, data[0]));
    return 0;
}
