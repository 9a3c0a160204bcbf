#include "tools/handbook/tables.h"

#include "config/encoding.h"
#include "config/text.h"
#include "model/instruction.h"
#include "model/statement.h"
#include "model/statement_text.h"
#include "tools/handbook/argument_text.h"

namespace zentro {

namespace {

std::string ArgumentsText(const Instruction& instruction) {
    std::string text;
    for (const ArgumentRole role : instruction.roles) {
        const ArgumentType type = TypeOf(role);
        if (type == ArgumentType::None) break;
        if (!text.empty()) text += ", ";
        text += type == ArgumentType::Byte   ? "byte"
                : type == ArgumentType::Word ? "word"
                                             : "address";
    }
    return text;
}

std::string Sentence(std::string text) {
    if (!text.empty()) text.front() = FoldCase(text.front());
    return text + ".";
}

}  // namespace

std::string TableHtml(const Rows& rows) {
    std::string html = "<table border=\"1\" cellspacing=\"0\" cellpadding=\"4\">\n";
    for (std::size_t row = 0; row < rows.size(); ++row) {
        const std::string cell = row == 0 ? "th" : "td";
        html += "<tr>";
        for (const std::string& text : rows[row])
            html.append("<").append(cell).append(">").append(text).append("</" + cell + ">");
        html += "</tr>\n";
    }
    return html + "</table>\n<p></p>\n";
}

std::string DescriptionHtml(const Command& entry) {
    const std::string words = ToUtf8(entry.command);
    const StatementText text = TextOf(entry);
    const std::string form = ToUtf8(text.form);
    const std::string meaning = EscapeHtml(ToUtf8(text.meaning));
    std::string html = "<p>";
    if (entry.family == TokenFamily::Constant) {
        html += CodeHtml(words) + " has the value " + CodeHtml(ToUtf8(entry.description)) + ".";
    } else if (form.empty()) {
        html += CodeHtml(words) + ": " + meaning + ".";
    } else {
        const bool isCall = StartsWithIgnoreCase(form, words + "(");
        html += isCall ? CodeHtml(form) : CodeHtml(words) + " <i>" + EscapeHtml(form) + "</i>";
        html += "<br>" + Sentence(meaning);
    }
    if (const Statement* function = FindFunction(entry.id))
        html += "<br>It gives " + ResultText(function->result) + ".";
    return html + "</p>\n";
}

std::string WordIndexHtml(std::span<const WordPlace> places, const References& references) {
    Rows rows{{"Word", "Explained at"}};
    for (const WordPlace& place : places) {
        std::string links;
        for (const Command* entry : place.entries) {
            if (!links.empty()) links += ", ";
            links += references.LinkHtml(entry->token);
        }
        const bool isHere = place.page == nullptr && !place.isOtherWord;
        const std::string anchors = isHere ? WordAnchorsHtml(place.word) : "";
        rows.push_back({anchors + CodeHtml(place.word), links});
    }
    return TableHtml(rows);
}

std::string MessageTableHtml(const MessageCatalogue& messages, std::string_view first,
                             std::string_view last) {
    Rows rows{{"Code", "Text"}};
    const int end = ParseNumber(last.substr(1)).value_or(0);
    for (int number = ParseNumber(first.substr(1)).value_or(0); number <= end; ++number) {
        const std::string code = "E" + std::to_string(number);
        if (const ErrorMessage* message = messages.Find(code))
            rows.push_back({AnchorHtml(code) + code, EscapeHtml(ToUtf8(message->errorMsg))});
    }
    return TableHtml(rows);
}

std::string InstructionTableHtml() {
    Rows rows{{"Number", "Instruction", "Values", "Bytes"}};
    for (const Instruction& instruction : InstructionTable()) {
        if (instruction.support == InstructionSupport::Reserved) continue;
        rows.push_back({std::to_string(static_cast<int>(instruction.opcode)),
                        EscapeHtml(instruction.name), ArgumentsText(instruction),
                        std::to_string(instruction.Size())});
    }
    return TableHtml(rows);
}

}  // namespace zentro
