#include "config/configuration.h"

#include <array>
#include <cstddef>
#include <optional>
#include <utility>

#include "config/encoding.h"
#include "config/file.h"
#include "config/text.h"

namespace zentro {

namespace {

/// Reads comma-separated fields; a line end separates fields as a comma does.
class FieldReader {
  public:
    explicit FieldReader(std::string_view text) : rest_(text) {}

    /// The next field, trimmed; nothing at the end of the text or after a fault.
    std::optional<std::string_view> Next() {
        SkipBlanks();
        if (rest_.empty()) return std::nullopt;
        return rest_.front() == '"' ? NextQuoted() : NextPlain();
    }

    /// What is wrong with the text, with its line; empty while nothing is.
    const std::string& Fault() const { return fault_; }

    /// " in line 12", for faults that only the caller can see.
    std::string Place() const { return "in line " + std::to_string(fieldLine_); }

  private:
    static bool IsLineEnd(char c) { return c == '\r' || c == '\n'; }
    static bool IsEndOfText(std::string_view text) {
        return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
    }

    void SkipBlanks() {
        while (!rest_.empty() && (rest_.front() == ' ' || rest_.front() == '\t')) {
            rest_.remove_prefix(1);
        }
    }

    std::string_view NextPlain() {
        fieldLine_ = line_;
        std::size_t end = 0;
        while (end < rest_.size() && rest_[end] != ',' && !IsLineEnd(rest_[end]))
            ++end;
        const std::string_view field = Trim(rest_.substr(0, end));
        rest_.remove_prefix(end);
        SkipSeparator();
        return field;
    }

    std::optional<std::string_view> NextQuoted() {
        fieldLine_ = line_;
        std::size_t end = 1;
        while (end < rest_.size() && rest_[end] != '"' && !IsLineEnd(rest_[end]))
            ++end;
        if (end == rest_.size() || rest_[end] != '"') {
            if (IsEndOfText(rest_.substr(end))) return std::nullopt;  // cut off in the last record
            fault_ = "the closing quote is missing " + Place();
            return std::nullopt;
        }
        const std::string_view field = Trim(rest_.substr(1, end - 1));
        rest_.remove_prefix(end + 1);
        SkipBlanks();
        if (!rest_.empty() && rest_.front() != ',' && !IsLineEnd(rest_.front())) {
            fault_ = "a comma is missing after a closing quote " + Place();
            return std::nullopt;
        }
        SkipSeparator();
        return field;
    }

    void SkipSeparator() {
        if (rest_.empty()) return;
        if (rest_.front() != ',') ++line_;
        rest_.remove_prefix(rest_.starts_with("\r\n") ? 2 : 1);
    }

    std::string_view rest_;
    std::string fault_;
    int line_ = 1;
    int fieldLine_ = 1;
};

constexpr std::string_view kNotReadable =
    "Could Not open ZentroCode.Cfg - File corrupt or missing - ";

Severity SeverityFromNumber(std::int32_t number) {
    return number >= 0 && number <= 4 ? static_cast<Severity>(number) : Severity::Information;
}

using Record = std::array<std::string, 3>;

/// Enters one record. Returns the text to show when it is wrong, else an empty one.
std::string AddRecord(Record& record, const FieldReader& reader,
                      InstructionConfiguration& configuration) {
    auto& [token, text, third] = record;
    const std::string key = token;
    bool isNew = false;
    if (!token.empty() && FoldCase(token.front()) == 'E') {
        const std::optional<std::int32_t> severity = ParseNumber(third);
        if (!severity) {
            return "Error reading Configuration file for " + token + ": " + text +
                   ". File is corrupted (the severity " + reader.Place() + " is not a number)";
        }
        isNew = configuration.messages.AddErrorMessage(
            {std::move(token), std::move(text), SeverityFromNumber(*severity)});
    } else {
        isNew = configuration.commands.AddCommand(
            {std::move(token), std::move(text), std::move(third)});
    }
    if (isNew) return {};
    return std::string(kNotReadable) + key + " occurs a second time " + reader.Place();
}

}  // namespace

std::string ParseInstructionConfig(std::string bytes, InstructionConfiguration& configuration) {
    const std::string text = DecodeText(std::move(bytes));
    FieldReader reader(text);
    for (;;) {
        Record record;
        for (std::string& field : record) {
            const std::optional<std::string_view> next = reader.Next();
            if (!next) {
                return reader.Fault().empty() ? std::string()
                                              : std::string(kNotReadable) + reader.Fault();
            }
            field = *next;
        }
        if (std::string problem = AddRecord(record, reader, configuration); !problem.empty()) {
            return problem;
        }
    }
}

std::string LoadInstructionConfig(const std::string& path,
                                  InstructionConfiguration& configuration) {
    FileContent file = ReadWholeFile(path);
    if (file.status != FileContent::Status::Read) return std::string(kNotReadable) + file.problem;
    return ParseInstructionConfig(std::move(file.bytes), configuration);
}

std::vector<std::string> MissingEntries(const InstructionConfiguration& configuration) {
    std::vector<std::string> missing;
    for (const TokenRow& row : TokenTable()) {
        if (configuration.commands.ByToken(row.token) == nullptr) missing.emplace_back(row.text);
    }
    for (const MessageCode code : MessageCodes()) {
        if (configuration.messages.Find(code) == nullptr) missing.push_back(MessageCodeText(code));
    }
    return missing;
}

std::string TellMissingEntries(const InstructionConfiguration& configuration) {
    const std::vector<std::string> missing = MissingEntries(configuration);
    if (missing.empty()) return {};
    const std::string start = "the configuration file is cut short or made for another version: ";
    if (missing.size() == 1) return start + "the entry " + missing[0] + " is missing";
    return start + std::to_string(missing.size()) + " entries are missing, the first is " +
           missing[0];
}

}  // namespace zentro
