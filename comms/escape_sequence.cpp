#include "comms/escape_sequence.h"

#include <algorithm>

namespace zentro {

namespace {

constexpr char kAnyDigit = '#';

struct Form {
    EscapeKind kind;
    std::string_view characters;  ///< after ESC; kAnyDigit stands for a digit
};

constexpr Form kForms[] = {
    {EscapeKind::ClearScreen, "C"},
    {EscapeKind::OneCharacterBack, "[D"},
    {EscapeKind::LinesUp, "[#A"},
    {EscapeKind::EraseToEnd, "[0J"},
};

bool Fits(char form, char character) {
    if (form == kAnyDigit) return character >= '0' && character <= '9';
    const bool isLetter = form >= 'A' && form <= 'Z';
    return character == form || (isLetter && character == form - 'A' + 'a');
}

/// Whether as many characters as both have agree.
bool Agrees(const Form& form, std::string_view characters) {
    const std::size_t length = std::min(form.characters.size(), characters.size());
    return std::equal(form.characters.begin(), form.characters.begin() + length, characters.begin(),
                      Fits);
}

}  // namespace

std::optional<EscapeSequence> ReadEscapeSequence(std::string_view text) {
    if (text.empty() || text.front() != kEscape) return std::nullopt;
    text.remove_prefix(1);
    for (const Form& form : kForms) {
        if (text.size() < form.characters.size() || !Agrees(form, text)) continue;
        const int lines = form.kind == EscapeKind::LinesUp ? text[1] - '0' : 0;
        return EscapeSequence{form.kind, 1 + form.characters.size(), lines};
    }
    return std::nullopt;
}

bool MayBecomeEscapeSequence(std::string_view text) {
    if (text.empty() || text.front() != kEscape) return false;
    text.remove_prefix(1);
    return std::ranges::any_of(kForms, [text](const Form& form) {
        return text.size() < form.characters.size() && Agrees(form, text);
    });
}

}  // namespace zentro
