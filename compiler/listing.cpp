#include "compiler/listing.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <string>

#include "config/encoding.h"

namespace zentro {

namespace {

/// Appends the first `shown` characters of the text, with blanks up to the width.
void AppendColumn(std::string_view text, std::size_t shown, std::size_t width, std::string& line) {
    const std::size_t start = line.size();
    line += text.substr(0, shown);
    if (line.size() < start + width) line.resize(start + width, ' ');
}

constexpr std::size_t kLabelWidth = 21;
constexpr std::size_t kValueWidth = 25;
constexpr std::string_view kNoAddress = "            ";

std::string AddressColumn(std::int32_t address) {
    std::array<char, 32> text{};
    const int length = std::snprintf(text.data(), text.size(), "[%04X]/%04d",
                                     static_cast<unsigned>(address) & 0xFFFFU, address);
    return {text.data(), static_cast<std::size_t>(length)};
}

std::string LabelColumn(const Label* label) {
    constexpr std::size_t kShown = 19;
    std::string column;
    if (label != nullptr && !label->name.empty()) {
        column = label->name.substr(0, kShown);
        column += ':';
    }
    column.resize(kLabelWidth, ' ');
    return column;
}

std::string CommentColumn(std::string_view comment) {
    constexpr std::size_t kShown = 40;
    constexpr std::size_t kShownOfLonger = 37;
    std::string column = ";";
    column += comment;
    if (column.size() <= kShown) return column;
    return column.substr(0, kShownOfLonger) + "...";
}

std::string InstructionText(const ObjectLine& line) {
    constexpr std::size_t kShownName = 28;
    constexpr std::size_t kNameWidth = 29;
    constexpr std::size_t kNoArguments = 14;
    std::string text;
    AppendColumn(line.OpcodeName(), kShownName, kNameWidth, text);
    if (line.argCount == 0) text.append(kNoArguments, ' ');
    for (std::size_t i = 0; i < line.argCount; ++i) {
        if (i > 0) text += ", ";
        text += line.arguments[i].symbol;
    }
    return text + "\t\t\t" + CommentColumn(line.comment);
}

/// Writes a long value over several lines, none of which shows the address.
void WriteLongValue(const ObjectLine& line, ListingSink& listing) {
    constexpr std::size_t kPiece = 20;
    constexpr std::size_t kLastCut = 24;
    std::string_view value = line.value;
    std::string label = LabelColumn(line.label);
    std::string comment = CommentColumn(line.comment);
    while (value.size() > kPiece) {
        const std::size_t comma = value.find(',', kPiece - 1);
        std::size_t cut = comma == std::string_view::npos ? kPiece : comma + 1;
        if (cut > kLastCut) cut = kPiece;
        std::string text(kNoAddress);
        text += label;
        AppendColumn(value.substr(0, cut), cut, kValueWidth, text);
        listing.AddCodeLine(ToUtf8(text + comment));
        label.assign(kLabelWidth, ' ');
        comment.clear();
        value.remove_prefix(cut);
    }
    listing.AddCodeLine(ToUtf8(std::string(kNoAddress) + label + std::string(value)));
}

void WriteLine(const ObjectLine& line, ListingSink& listing) {
    constexpr std::size_t kLongValue = 24;
    if (line.purpose == ObjectPurpose::VariableLocation && line.value.size() >= kLongValue) {
        WriteLongValue(line, listing);
        return;
    }
    std::string text = AddressColumn(line.address) + " " + LabelColumn(line.label);
    if (line.purpose == ObjectPurpose::Instruction) {
        text += InstructionText(line);
    } else {
        AppendColumn(line.value, line.value.size(), kValueWidth, text);
        text += CommentColumn(line.comment);
    }
    listing.AddCodeLine(ToUtf8(text));
}

}  // namespace

void WriteListing(const Compilation& compilation, ListingSink& listing) {
    for (const ObjectLine& line : compilation.objectLines) {
        WriteLine(line, listing);
        compilation.environment.progress.LetEventsRun();
    }
}

}  // namespace zentro
