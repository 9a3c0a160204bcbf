#include "settings/settings_file.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "settings/utf8_text.h"

namespace zentro {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kBlanks = " \t\r";  // with CR, a line may end in CR LF
constexpr std::string_view kTrue = "#TRUE#";
constexpr std::string_view kFalse = "#FALSE#";

void SkipBlanks(std::string_view& rest) {
    rest.remove_prefix(std::min(rest.find_first_not_of(kBlanks), rest.size()));
}

/// Skips one character when it comes next.
bool Skip(std::string_view& rest, char character) {
    SkipBlanks(rest);
    if (!rest.starts_with(character)) return false;
    rest.remove_prefix(1);
    return true;
}

/// What stands before the next comma or line end, without the blanks around it.
std::string_view TakeBare(std::string_view& rest) {
    SkipBlanks(rest);
    std::string_view field = rest.substr(0, rest.find_first_of(",\n"));
    rest.remove_prefix(field.size());
    const std::size_t last = field.find_last_not_of(kBlanks);
    return last == std::string_view::npos ? std::string_view{} : field.substr(0, last + 1);
}

/// A text in double quotes; each quote within it is written twice, line ends stand for themselves.
std::optional<std::string> TakeQuoted(std::string_view& rest) {
    if (!Skip(rest, '"')) return std::nullopt;
    std::string text;
    while (true) {
        const std::size_t quote = rest.find('"');
        if (quote == std::string_view::npos) return std::nullopt;
        text += rest.substr(0, quote);
        rest.remove_prefix(quote + 1);
        if (!rest.starts_with('"')) return text;
        text += '"';
        rest.remove_prefix(1);
    }
}

bool EqualIgnoringCase(std::string_view text, std::string_view upperCase) {
    return std::ranges::equal(text, upperCase, {}, [](char character) {
        return character >= 'a' && character <= 'z' ? static_cast<char>(character - 32) : character;
    });
}

/// A value; nothing at all is Empty.
std::optional<SettingValue> TakeValue(std::string_view& rest) {
    SkipBlanks(rest);
    if (rest.starts_with('"')) {
        std::optional<std::string> text = TakeQuoted(rest);
        if (!text) return std::nullopt;
        return *std::move(text);
    }
    const std::string_view field = TakeBare(rest);
    if (field.empty()) return SettingValue{};
    if (EqualIgnoringCase(field, kTrue)) return true;
    if (EqualIgnoringCase(field, kFalse)) return false;
    SettingValue number = NumberFromText(field);
    if (std::holds_alternative<std::monostate>(number)) return std::nullopt;
    return number;
}

/// record = number "," text "," value line-end. Returns what is wrong, or nothing.
std::string_view TakeRecord(std::string_view& rest, Config& config) {
    const SettingValue number = NumberFromText(TakeBare(rest));
    if (!std::holds_alternative<std::int32_t>(number) || !Skip(rest, ',')) {
        return "a record begins with the number of a setting and a comma";
    }
    const std::optional<std::string> subClass = TakeQuoted(rest);
    if (!subClass || !Skip(rest, ',')) {
        return "after the number stands a sub-key in double quotes and a comma";
    }
    std::optional<SettingValue> value = TakeValue(rest);
    if (!value) {
        return "the value is neither a text in double quotes nor a number, #TRUE# or #FALSE#";
    }
    SkipBlanks(rest);
    if (!rest.empty() && !Skip(rest, '\n')) return "something stands after the value";
    const SettingNumber settingNumber{std::get<std::int32_t>(number)};
    if (!config.Add(settingNumber, *subClass, *std::move(value))) return "the same setting twice";
    return {};
}

std::string Quoted(std::string_view text) {
    std::string quoted = "\"";
    for (const char character : text) {
        if (character == '"') quoted += '"';
        quoted += character;
    }
    return quoted + '"';
}

std::string ValueText(const SettingValue& value) {
    if (const auto* text = std::get_if<std::string>(&value)) return Quoted(*text);
    if (const auto* boolean = std::get_if<bool>(&value)) {
        return std::string(*boolean ? kTrue : kFalse);
    }
    return AsText(value);
}

}  // namespace

ParsedConfig ParseConfig(std::string_view bytes) {
    if (bytes.starts_with(kByteOrderMark)) bytes.remove_prefix(kByteOrderMark.size());
    const std::string text = Utf8Text(bytes);
    ParsedConfig parsed;
    std::string_view rest = text;
    while (true) {
        while (Skip(rest, '\n')) {
        }
        if (rest.empty()) return parsed;
        const auto start = text.end() - static_cast<std::ptrdiff_t>(rest.size());
        parsed.error = TakeRecord(rest, parsed.config);
        if (!parsed.error.empty()) {
            parsed.line = static_cast<std::size_t>(std::count(text.begin(), start, '\n')) + 1;
            return parsed;
        }
    }
}

std::string WriteConfig(const Config& config) {
    std::string text;
    for (const ConfigValue& record : config) {
        text += std::to_string(static_cast<std::int32_t>(record.configType)) + ',' +
                Quoted(record.subClass) + ',' + ValueText(record.value) + '\n';
    }
    return text;
}

}  // namespace zentro
