#include "compiler/listing.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <string>

#include "compiler/object_comments.h"
#include "config/encoding.h"

namespace zentro {

namespace {

/// Appends the first `shown` characters of the text, which are fewer than the width, with blanks up
/// to the width.
void AppendColumn(std::string_view text, std::size_t shown, std::size_t width, std::string& line) {
    const std::size_t start = line.size();
    line += text.substr(0, shown);
    line.resize(start + width, ' ');
}

constexpr std::size_t kLabelWidth = 21;
constexpr std::size_t kValueWidth = 25;

std::string AddressColumn(std::int32_t address) {
    std::array<char, 32> text{};
    const int length = std::snprintf(text.data(), text.size(), "[%04X]/%04d",
                                     static_cast<unsigned>(address) & 0xFFFFU, address);
    return {text.data(), static_cast<std::size_t>(length)};
}

/// `element` is the number of a table's byte, whose name is shown as far as there is room.
std::string LabelColumn(const Label* label, std::size_t element = 0) {
    constexpr std::size_t kShown = 19;
    std::string column;
    if (label != nullptr) {
        column = label->name.substr(0, kShown);
        if (element > 0) column += std::to_string(element);
        column = column.substr(0, kShown) + ':';
    }
    column.resize(kLabelWidth, ' ');
    return column;
}

std::string CommentColumn(const std::string& comment) {
    constexpr std::size_t kShown = 40;
    constexpr std::size_t kShownOfLonger = 37;
    std::string column = ";" + comment;
    if (column.size() <= kShown) return column;
    return column.substr(0, kShownOfLonger) + "...";
}

std::string InstructionText(const ObjectLine& line, const std::string& comment) {
    constexpr std::size_t kShownName = 28;
    constexpr std::size_t kNameWidth = 29;
    constexpr std::size_t kNoArguments = 14;
    std::string text;
    AppendColumn(line.OpcodeName(), kShownName, kNameWidth, text);
    if (line.argCount == 0) text.append(kNoArguments, ' ');
    for (std::size_t i = 0; i < line.argCount; ++i) {
        if (i > 0) text += ", ";
        text += line.arguments[i]->name;
    }
    return text + "\t\t\t" + CommentColumn(comment);
}

void WriteLine(const ObjectLine& line, const std::string& comment, ListingSink& listing) {
    std::string text = AddressColumn(line.address) + " " + LabelColumn(line.label);
    if (line.purpose == ObjectPurpose::Instruction) {
        text += InstructionText(line, comment);
    } else {
        const ObjectCodeText value(line);
        AppendColumn(value.View(), value.View().size(), kValueWidth, text);
        text += CommentColumn(comment);
    }
    listing.AddCodeLine(ToUtf8(text));
}

void WriteTable(const ObjectLine& line, const std::string& comment, ListingSink& listing) {
    std::int32_t address = line.address;
    line.table->ForEach([&](std::uint8_t byte) {
        const auto element = static_cast<std::size_t>(address - line.address);
        std::string text = AddressColumn(address) + " " + LabelColumn(line.label, element);
        const ObjectCodeText value(byte);
        AppendColumn(value.View(), value.View().size(), kValueWidth, text);
        listing.AddCodeLine(ToUtf8(text + CommentColumn(comment)));
        return ++address < kMostBytesListed;
    });
}

}  // namespace

void WriteListing(const Compilation& compilation, ListingSink& listing) {
    const ObjectComments comments(compilation);
    for (const ObjectLine& line : compilation.objectLines) {
        if (line.address >= kMostBytesListed) break;
        const std::string comment = comments.TextOf(line);
        line.IsTable() ? WriteTable(line, comment, listing) : WriteLine(line, comment, listing);
        compilation.environment.progress.LetEventsRun();
    }
}

}  // namespace zentro
