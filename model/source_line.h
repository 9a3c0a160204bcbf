#pragma once

#include <cstdint>
#include <memory_resource>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "config/token.h"
#include "model/label.h"
#include "model/line_element.h"

namespace zentro {

/// What kind of line a source line is.
enum class Purpose : std::uint8_t {
    Unclassified = 0,  ///< data lines of a table, and lines that match nothing
    Statement = 3,
    BlockStart = 4,
    Assignment = 5,
    BlockMiddle = 6,
    BlockEnd = 7,
    FunctionAssignment = 8,
    Blank = 9,
    ByteDeclaration = 10,
    WordDeclaration = 11,
    FlagDeclaration = 12,
    ConstantDeclaration = 13,
    RoutineHeader = 14,
    EventHeader = 15,
    DataTableHeader = 16,
    PointerDeclaration = 17,
};

/// Where a symbol or a line's declarations can be seen.
enum class Scope : std::uint8_t {
    Program = 1,
    Local = 2,
};

/// A source file of the compilation.
struct SourceFile {
    std::string name;       ///< without folder, as UTF-8
    std::string directory;  ///< the folder it was asked for in, as UTF-8
    std::string text;       ///< its content, in the program's own character set
};

/// One line of a source file. Its texts are pieces of the file's text or lie in the compilation's
/// memory, so a line lives no longer than its compilation.
struct SourceLine {
    explicit SourceLine(std::pmr::memory_resource* memory) : elements(memory) {}

    std::string_view text;        ///< exactly as in the file, without the line end
    std::string_view parsedLine;  ///< normalised, without the comment
    std::string_view comment;     ///< from its ";" to the end of the line
    std::string_view parentName;  ///< the routine or event that the line belongs to, or "Program"

    const SourceFile* file = nullptr;
    Label* label = nullptr;  ///< "Line" and the number, for lines that a block jumps to

    std::int32_t lineNumber = 0;         ///< from 1, over all files in the order of reading
    std::int32_t fileLineNo = 0;         ///< from 1, within its file
    std::int32_t structPrevLineNo = 0;   ///< the line before in its block's chain; 0: none
    std::int32_t structNextLineNo = 0;   ///< the line after in its block's chain; 0: none
    std::int32_t structFirstLineNo = 0;  ///< the line that opened the block; 0: not part of one
    std::int32_t structLastLineNo = 0;   ///< on the line that opened it: the chain's last line

    Purpose purpose = Purpose::Unclassified;
    Token token = Token::None;
    Scope scope = Scope::Program;
    bool hasErrors = false;
    bool hasWarnings = false;

    /// The operands in the order in which the parsers found them.
    std::pmr::vector<LineElement> elements;

    void AddElement(const LineElement& element);

    /// The index-th element (from 0) with the use; nothing when there is none.
    const LineElement* GetElement(ElementUse use, std::size_t index = 0) const;

    /// The element with the class; nothing when there is none.
    const LineElement* GetElement(ElementClass elementClass) const;

    std::size_t CountElements(ElementUse use) const;

    bool GeneratesCode() const;
    bool IsSystemFunctionCall() const;
};

}  // namespace zentro
