#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "config/message_code.h"
#include "config/text.h"

namespace zentro {

/// Where a message goes. Any other number of the configuration file counts as Information.
enum class Severity : std::uint8_t {
    Error = 0,
    Warning = 1,
    Information = 2,
    Box = 3,     ///< shown at once in a message box, neither logged nor counted
    Advice = 4,  ///< logged as information and marked softly, never counted
};

/// One message record of the configuration file.
struct ErrorMessage {
    std::string token;     ///< "E24"
    std::string errorMsg;  ///< the text that the user reads
    Severity errorSeverity = Severity::Information;
};

/// The texts of the messages, by code.
class MessageCatalogue {
  public:
    /// Adds a message. False when its code is in the catalogue already; nothing is added then.
    bool AddErrorMessage(ErrorMessage message);

    /// The message with the code, or nothing. It lives as long as the catalogue.
    const ErrorMessage* Find(std::string_view code) const;
    const ErrorMessage* Find(MessageCode code) const;

    /// The text of a message; empty when the code is not in the catalogue.
    std::string_view GetMessageText(MessageCode code) const;

  private:
    std::unordered_map<std::string, ErrorMessage, FoldedHash, FoldedEqual> messages_;
};

/// What the user is told instead of a message whose text is not in the catalogue.
std::string TextNotFound(MessageCode code);

}  // namespace zentro
