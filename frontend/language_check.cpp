#include "frontend/language_check.h"

#include <algorithm>
#include <string_view>

#include "config/encoding.h"
#include "config/text.h"
#include "frontend/line_normalizer.h"
#include "frontend/literal.h"
#include "frontend/parse_declares.h"
#include "model/statement.h"
#include "model/value_bounds.h"

namespace zentro {

namespace {

bool EndsBlock(Token token) {
    const Statement* statement = FindStatement(token);
    return statement != nullptr && statement->reading == Reading::BlockEnd;
}

/// The declarations and block ends that the declaration pass has to see. It passes over the ends of
/// other blocks.
bool IsReadFirst(Token token) {
    return FamilyOf(token) == TokenFamily::Declaration || token == Token::SharedParameters ||
           (EndsBlock(token) && IsDeclaredBlock(FindStatement(token)->edge.block));
}

std::string Quoted(std::string_view text) {
    return "\"" + ToUtf8(Shorten(text)) + "\"";
}

/// "D4, "DEFINE TABLE""
std::string Named(const Command& entry) {
    return ToUtf8(Shorten(entry.token)) + ", " + Quoted(entry.command);
}

/// Words that no program holds: the mark of a call, and the list for the editor.
bool IsNeverWritten(const Command& entry) {
    return entry.id == Token::RoutineCall || entry.id == Token::KeywordList;
}

/// Letters, digits and "_" make names and numbers; the others have a meaning of their own.
bool CanBeSign(char c) {
    constexpr std::string_view kTaken = "_(),;\"";
    return !IsBlank(c) && !IsLetter(c) && !IsDigit(c) && kTaken.find(c) == std::string_view::npos;
}

class LanguageCheck {
  public:
    explicit LanguageCheck(const InstructionConfiguration& configuration)
        : configuration_(configuration), commands_(configuration.commands) {}

    std::vector<LanguageFinding> Run() {
        if (std::string missing = TellMissingEntries(configuration_); !missing.empty())
            findings_.push_back({std::move(missing), true});
        for (const MessageCode code : MessageCodes())
            CheckText(code);
        for (const Command& entry : commands_.Entries()) {
            if (IsSignOperator(entry.id)) CheckSign(entry);
        }
        for (const Command& entry : commands_.Entries()) {
            if (!IsNeverWritten(entry)) CheckEntry(entry);
        }
        return std::move(findings_);
    }

  private:
    void Tell(const Command& entry, const std::string& what, bool spoilsPrograms = false) {
        findings_.push_back({"record " + Named(entry) + ": " + what, spoilsPrograms});
    }

    void CheckText(MessageCode code) {
        const ErrorMessage* message = configuration_.messages.Find(code);
        if (message != nullptr && message->errorMsg.empty())
            findings_.push_back({"record " + MessageCodeText(code) + ": the message has no text"});
    }

    void CheckSign(const Command& entry) {
        if (std::ranges::all_of(entry.command, CanBeSign)) return;
        hasBadSign_ = true;
        Tell(entry,
             "this operator must be made of signs, because it is told from names and numbers by "
             "its characters: letters, digits, blanks, double quotes and _ ( ) , ; cannot be in "
             "it",
             true);
    }

    void CheckEntry(const Command& entry) {
        if (entry.command.empty()) return Tell(entry, "the words are missing");
        CheckWords(entry);
        CheckBeginning(entry);
        const Command* found = commands_.FindCommand(entry.command);
        if (found != &entry && found != nullptr)
            Tell(entry, "these words are never found, because record " + Named(*found) +
                            " stands before it and begins with them or is the same");
        if (entry.family == TokenFamily::Constant) CheckConstant(entry);
    }

    /// Whether a program can hold the words.
    void CheckWords(const Command& entry) {
        const bool isOneWord = entry.family == TokenFamily::Function ||
                               entry.family == TokenFamily::Operator ||
                               entry.family == TokenFamily::Constant;
        // With letters for signs all words are cut apart.
        const std::string read =
            hasBadSign_ ? entry.command : NormalizedText(commands_, entry.command);
        if (read != entry.command) {
            Tell(entry,
                 "these words are never found, because the compiler reads them as " + Quoted(read));
        } else if (entry.command.find_first_of("(),") != std::string::npos) {
            Tell(entry, "parentheses and commas cannot be in it, because words end there");
        } else if (isOneWord && entry.command.find(' ') != std::string::npos) {
            Tell(entry, "it must be a single word");
        }
    }

    bool BeginsWith(const Command& entry, Token beginning) const {
        const Command* begins = commands_.ByToken(beginning);
        return begins != nullptr && !begins->command.empty() &&
               StartsWithIgnoreCase(entry.command, begins->command);
    }

    /// The declaration pass looks only at lines with certain beginnings, and at all of those.
    void CheckBeginning(const Command& entry) {
        if (IsReadFirst(entry.id)) {
            if (!BeginsWith(entry, Token::DefinePrefix) && !BeginsWith(entry, Token::EndPrefix))
                Tell(entry,
                     "it must begin with the words of R11, " +
                         Quoted(commands_.GetCommandText(Token::DefinePrefix)) + ", or of R12, " +
                         Quoted(commands_.GetCommandText(Token::EndPrefix)) +
                         "; otherwise its lines are not read as declarations",
                     true);
            return;
        }
        const bool canBeginLine = entry.family == TokenFamily::Statement ||
                                  entry.family == TokenFamily::Constant ||
                                  entry.id == Token::Reserve;
        if (!canBeginLine || EndsBlock(entry.id)) return;
        for (const Token beginning : {Token::DefinePrefix, Token::EndPrefix, Token::Include}) {
            if (!BeginsWith(entry, beginning)) continue;
            Tell(entry, "it begins with the words of " + Named(*commands_.ByToken(beginning)) +
                            ", so its lines are read as declarations");
        }
    }

    void CheckConstant(const Command& entry) {
        if (IsNumeric(entry.command) || IsHexadecimal(entry.command))
            Tell(entry, "a number cannot be the name of a constant");
        if (!CheckValueBounds(DataType::Word, entry.description)) {
            Tell(entry, "the value " + Quoted(entry.description) +
                            " is neither a number from 0 to 32767 nor one or two characters");
        }
        const bool isTrue = entry.id == Token::True;
        const std::int32_t wanted = isTrue ? kFlagTrue : kFlagFalse;
        if ((isTrue || entry.id == Token::False) && NumberOf(entry.description) != wanted)
            Tell(entry, "its value must be " + std::to_string(wanted));
    }

    const InstructionConfiguration& configuration_;
    const CommandCatalogue& commands_;
    std::vector<LanguageFinding> findings_;
    bool hasBadSign_ = false;
};

}  // namespace

std::vector<LanguageFinding> CheckLanguage(const InstructionConfiguration& configuration) {
    return LanguageCheck(configuration).Run();
}

std::string TellFindings(const std::vector<LanguageFinding>& findings) {
    constexpr std::size_t kShown = 10;
    std::string text;
    for (std::size_t i = 0; i < findings.size() && i < kShown; ++i)
        text += (i == 0 ? "" : "\n") + findings[i].text;
    if (findings.size() > kShown)
        text += "\nand " + std::to_string(findings.size() - kShown) + " more";
    return text;
}

}  // namespace zentro
