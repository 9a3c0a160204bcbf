#include "config/message_code.h"

#include <algorithm>
#include <array>

namespace zentro {

namespace {

struct MessageGroup {
    MessageCode first;
    MessageCode end;
};

constexpr std::array kGroups{
    MessageGroup{MessageCode::StageFailed, MessageCode::EndOfErrors},
    MessageGroup{MessageCode::NoInitialValue, MessageCode::EndOfWarnings},
    MessageGroup{MessageCode::EventNeverWatched, MessageCode::EndOfAdvice},
    MessageGroup{MessageCode::LoadStarts, MessageCode::EndOfProgress},
    MessageGroup{MessageCode::NeededByteVariable, MessageCode::EndOfHints},
    MessageGroup{MessageCode::FormOfStatement, MessageCode::EndOfLineHints},
    MessageGroup{MessageCode::HundredthsShown, MessageCode::EndOfMends},
    MessageGroup{MessageCode::AlreadyOpen, MessageCode::EndOfFailures},
};

/// The numbers of messages that there are no more.
constexpr std::array kUnused{
    MessageCode::Unused28,   MessageCode::Unused32,  MessageCode::Unused35, MessageCode::Unused44,
    MessageCode::Unused46,   MessageCode::Unused56,  MessageCode::Unused57, MessageCode::Unused501,
    MessageCode::Unused1003, MessageCode::Unused2008};

constexpr std::size_t CountMessages() {
    std::size_t count = 0;
    for (const MessageGroup& group : kGroups)
        count += static_cast<std::size_t>(group.end) - static_cast<std::size_t>(group.first);
    return count - kUnused.size();
}

constexpr std::array<MessageCode, CountMessages()> ListMessages() {
    std::array<MessageCode, CountMessages()> codes{};
    std::size_t count = 0;
    for (const MessageGroup& group : kGroups) {
        for (auto number = static_cast<std::uint16_t>(group.first);
             number < static_cast<std::uint16_t>(group.end); ++number) {
            const auto code = static_cast<MessageCode>(number);
            if (std::ranges::find(kUnused, code) == kUnused.end()) codes[count++] = code;
        }
    }
    return codes;
}

constexpr auto kMessageCodes = ListMessages();

}  // namespace

std::span<const MessageCode> MessageCodes() {
    return kMessageCodes;
}

std::string MessageCodeText(MessageCode code) {
    return "E" + std::to_string(static_cast<unsigned>(code));
}

}  // namespace zentro
