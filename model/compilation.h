#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory_resource>
#include <span>
#include <string_view>
#include <vector>

#include "config/configuration.h"
#include "model/compile_state.h"
#include "model/diagnostics.h"
#include "model/environment.h"
#include "model/line_element.h"
#include "model/object_line.h"
#include "model/source_line.h"
#include "model/symbol_table.h"
#include "model/text_arena.h"

namespace zentro {

/// One run of the compiler: everything that it reads, makes and knows. It stays whole after the run
/// for the listing, the debug windows and go-to-line. Several can live side by side.
struct Compilation {
    /// The configuration, the environment and the room outlive the compilation. What it keeps
    /// goes into the room first, if there is one, then to the heap.
    Compilation(const InstructionConfiguration& instructions, Environment outside,
                std::span<std::byte> room = {});
    Compilation(const Compilation&) = delete;
    Compilation& operator=(const Compilation&) = delete;

    const InstructionConfiguration& configuration;
    Environment environment;

    std::pmr::monotonic_buffer_resource memory;
    TextArena texts{&memory};

    std::deque<SourceFile> files;
    /// In the order of reading; line n stands at n - 1.
    std::pmr::vector<SourceLine> sourceLines{&memory};
    /// Of all lines, those of a line side by side.
    std::pmr::vector<LineElement> elements{&memory};
    /// In the order of their addresses.
    std::pmr::vector<ObjectLine> objectLines{&memory};
    /// The labels of lines and table elements.
    std::pmr::deque<Label> labels{&memory};

    Label programStart;  ///< where the main program begins
    Label programEnd;

    SymbolTable symbols{&memory};
    CompileStates states;
    Diagnostics diagnostics;

    ParentId currentParent = ParentId::Program;
    Symbol* currentTable = nullptr;  ///< while a table is open; null when it was not declared
    TableData undeclaredTable;       ///< takes the data of a table that was not declared
    bool currentTableHasErrors = false;
    bool mainBlockSeen = false;
    bool sharedParameters = false;  ///< routine parameters are program-wide
    bool wantsAdvice = true;        ///< about what is legal, but hardly meant

    /// The line with the number, which must exist.
    SourceLine& GetSourceLine(std::int32_t lineNumber) {
        return sourceLines[static_cast<std::size_t>(lineNumber) - 1];
    }
    const SourceLine& GetSourceLine(std::int32_t lineNumber) const {
        return sourceLines[static_cast<std::size_t>(lineNumber) - 1];
    }

    /// A label that lives as long as the compilation.
    Label& AddLabel(std::string_view name);

    /// Appends an operand to the line. The lines get theirs one after the other: once a line has
    /// elements, those before it get no more.
    void AddElement(SourceLine& line, const LineElement& element);

    /// The operands of a line in the order in which the parsers found them. More elements make
    /// this view invalid.
    std::span<const LineElement> ElementsOf(const SourceLine& line) const {
        return std::span(elements).subspan(line.firstElement, line.elementCount);
    }
    std::span<LineElement> ElementsOf(const SourceLine& line) {
        return std::span(elements).subspan(line.firstElement, line.elementCount);
    }

    /// The index-th element (from 0) of the line with the use; nothing when there is none.
    const LineElement* GetElement(const SourceLine& line, ElementUse use,
                                  std::size_t index = 0) const;
    /// The element of the line with the class; nothing when there is none.
    const LineElement* GetElement(const SourceLine& line, ElementClass elementClass) const;

    /// Gives the line the label by which its block jumps to it.
    void RegisterLineLabel(SourceLine& line);

    const Command* FindCommand(std::string_view text) const {
        return configuration.commands.FindCommand(text);
    }
    std::string_view GetCommandText(Token token) const {
        return configuration.commands.GetCommandText(token);
    }
};

/// The line that opened the block of line n: from n back along its chain to a BlockStart line.
/// Nothing when n is 0 or the chain ends before.
const SourceLine* FindStructOpener(const Compilation& compilation, std::int32_t lineNumber);

/// The line that closes the block of line n: from n on along its chain to a BlockEnd line.
const SourceLine* FindStructCloser(const Compilation& compilation, std::int32_t lineNumber);

/// The number of the source line whose first object line stands at the address; 0 when none does.
std::int32_t GetSourceLineNoForAddress(const Compilation& compilation, std::int32_t address);

/// Where a source line stands, with the address of its first object line.
LineXref XrefOf(const Compilation& compilation, std::int32_t lineNumber);

}  // namespace zentro
