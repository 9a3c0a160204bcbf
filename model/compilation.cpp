#include "model/compilation.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <charconv>

namespace zentro {

namespace {

bool IsLineNumber(const Compilation& compilation, std::int32_t lineNumber) {
    return lineNumber > 0 && static_cast<std::size_t>(lineNumber) <= compilation.sourceLines.size();
}

const SourceLine* FindInChain(const Compilation& compilation, std::int32_t lineNumber,
                              std::int32_t SourceLine::*next, Purpose wanted) {
    while (IsLineNumber(compilation, lineNumber)) {
        const SourceLine& line = compilation.GetSourceLine(lineNumber);
        if (line.purpose == wanted) return &line;
        lineNumber = line.*next;
    }
    return nullptr;
}

}  // namespace

Compilation::Compilation(const InstructionConfiguration& instructions, Environment outside,
                         std::span<std::byte> room)
    : configuration(instructions),
      environment(outside),
      memory(room.data(), room.size()),
      programStart{instructions.commands.GetCommandText(Token::BeginProgram)},
      programEnd{instructions.commands.GetCommandText(Token::EndProgram)},
      diagnostics(instructions.messages, outside.output, outside.prompts) {}

Label& Compilation::AddLabel(std::string_view name) {
    return labels.emplace_back(Label{name});
}

void Compilation::AddElement(SourceLine& line, const LineElement& element) {
    if (line.elementCount == 0) line.firstElement = static_cast<std::uint32_t>(elements.size());
    assert(line.firstElement + line.elementCount == elements.size());
    elements.push_back(element);
    ++line.elementCount;
}

const LineElement* Compilation::GetElement(const SourceLine& line, ElementUse use,
                                           std::size_t index) const {
    for (const LineElement& element : ElementsOf(line)) {
        if (element.use == use && index-- == 0) return &element;
    }
    return nullptr;
}

const LineElement* Compilation::GetElement(const SourceLine& line,
                                           ElementClass elementClass) const {
    for (const LineElement& element : ElementsOf(line)) {
        if (element.elementClass == elementClass) return &element;
    }
    return nullptr;
}

void Compilation::RegisterLineLabel(SourceLine& line) {
    std::array<char, 12> digits;
    const auto end = std::to_chars(digits.begin(), digits.end(), line.lineNumber).ptr;
    const std::string_view number(digits.begin(), static_cast<std::size_t>(end - digits.begin()));
    line.label = &AddLabel(texts.Concat("Line", number));
}

const SourceLine* FindStructOpener(const Compilation& compilation, std::int32_t lineNumber) {
    return FindInChain(compilation, lineNumber, &SourceLine::structPrevLineNo, Purpose::BlockStart);
}

const SourceLine* FindStructCloser(const Compilation& compilation, std::int32_t lineNumber) {
    return FindInChain(compilation, lineNumber, &SourceLine::structNextLineNo, Purpose::BlockEnd);
}

std::int32_t GetSourceLineNoForAddress(const Compilation& compilation, std::int32_t address) {
    const auto& lines = compilation.objectLines;
    const auto found = std::lower_bound(
        lines.begin(), lines.end(), address,
        [](const ObjectLine& line, std::int32_t wanted) { return line.address < wanted; });
    return found == lines.end() || found->address != address ? 0 : found->sourceLineNo;
}

LineXref XrefOf(const Compilation& compilation, std::int32_t lineNumber) {
    LineXref place;
    if (!IsLineNumber(compilation, lineNumber)) return place;
    const SourceLine& line = compilation.GetSourceLine(lineNumber);
    place.fileName = line.file->name;
    place.pathName = line.file->directory;
    place.sourceLineNo = line.fileLineNo;
    const auto found =
        std::find_if(compilation.objectLines.begin(), compilation.objectLines.end(),
                     [&](const ObjectLine& object) { return object.sourceLineNo == lineNumber; });
    if (found != compilation.objectLines.end()) place.address = found->address;
    return place;
}

}  // namespace zentro
