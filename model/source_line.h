#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "config/encoding.h"
#include "config/token.h"
#include "model/label.h"

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
    std::string name;                           ///< without folder, as UTF-8
    std::string directory;                      ///< the folder it was asked for in, as UTF-8
    std::string text;                           ///< its content, in the program's own character set
    std::int32_t includingLineNo = 0;           ///< the line that includes it; 0: the main file
    std::vector<ReplacedCharacter> replaced{};  ///< in its text, in the order of their places
};

/// The routine or event that something belongs to, by its number in the symbol table.
enum class ParentId : std::uint32_t {
    Program = 0,  ///< everything outside routines and events
};

/// One line of a source file. Its texts are pieces of the file's text or lie in the compilation's
/// memory, so a line lives no longer than its compilation. A program has many lines: they are kept
/// small, and what only a few need (the comment) is worked out when it is asked for.
struct SourceLine {
    std::string_view text;        ///< exactly as in the file, without the line end
    std::string_view parsedLine;  ///< normalised, without the comment

    const SourceFile* file = nullptr;
    Label* label = nullptr;  ///< "Line" and the number, for lines that a block jumps to

    std::int32_t lineNumber = 0;         ///< from 1, over all files in the order of reading
    std::int32_t fileLineNo = 0;         ///< from 1, within its file
    std::int32_t structPrevLineNo = 0;   ///< the line before in its block's chain; 0: none
    std::int32_t structNextLineNo = 0;   ///< the line after in its block's chain; 0: none
    std::int32_t structFirstLineNo = 0;  ///< the line that opened the block; 0: not part of one
    std::int32_t structLastLineNo = 0;   ///< on the line that opened it: the chain's last line
    std::uint32_t firstElement = 0;      ///< where the line's elements begin, among all elements
    ParentId parent = ParentId::Program;

    std::uint32_t elementCount = 0;
    Purpose purpose = Purpose::Unclassified;
    Token token = Token::None;
    Scope scope = Scope::Program;
    bool hasErrors : 1 = false;
    bool hasWarnings : 1 = false;
    /// It may hold characters that the language does not know: see ForeignCharactersIn.
    bool mayBeForeign : 1 = false;

    /// From the ";" to the end of the line, trimmed.
    std::string_view Comment() const;

    bool GeneratesCode() const;
    bool IsSystemFunctionCall() const;
};

/// The position of the ";" that begins a line's comment, or the length of the line.
std::size_t FindComment(std::string_view line);

}  // namespace zentro
