#include "config/message_catalogue.h"

#include <utility>

namespace zentro {

bool MessageCatalogue::AddErrorMessage(ErrorMessage message) {
    std::string code = message.token;
    return messages_.emplace(std::move(code), std::move(message)).second;
}

const ErrorMessage* MessageCatalogue::Find(std::string_view code) const {
    const auto found = messages_.find(code);
    return found == messages_.end() ? nullptr : &found->second;
}

const ErrorMessage* MessageCatalogue::Find(MessageCode code) const {
    return Find(MessageCodeText(code));
}

std::string_view MessageCatalogue::GetMessageText(MessageCode code) const {
    const ErrorMessage* message = Find(code);
    return message == nullptr ? std::string_view() : std::string_view(message->errorMsg);
}

std::string TextNotFound(MessageCode code) {
    return "Could not retrieve Error Message '" + MessageCodeText(code) +
           "'. ZentroCode.cfg may be an old version or corrupted";
}

}  // namespace zentro
