#pragma once

#include <cstdint>
#include <deque>
#include <memory_resource>
#include <string_view>
#include <vector>

#include "config/configuration.h"
#include "model/compile_state.h"
#include "model/diagnostics.h"
#include "model/environment.h"
#include "model/object_line.h"
#include "model/source_line.h"
#include "model/symbol_table.h"
#include "model/text_arena.h"

namespace zentro {

/// One run of the compiler: everything that it reads, makes and knows. It stays whole after the run
/// for the listing, the debug windows and go-to-line. Several can live side by side.
struct Compilation {
    /// The configuration and the environment outlive the compilation.
    Compilation(const InstructionConfiguration& instructions, Environment outside);
    Compilation(const Compilation&) = delete;
    Compilation& operator=(const Compilation&) = delete;

    const InstructionConfiguration& configuration;
    Environment environment;

    std::pmr::monotonic_buffer_resource memory;
    TextArena texts{&memory};

    std::deque<SourceFile> files;
    std::vector<SourceLine> sourceLines;  ///< in the order of reading; line n stands at n - 1
    std::vector<ObjectLine> objectLines;  ///< in the order of their addresses
    std::deque<Label> labels;             ///< the labels of lines and table elements

    Label programStart;  ///< where the main program begins
    Label programEnd;

    SymbolTable symbols{&memory};
    CompileStates states;
    Diagnostics diagnostics;

    std::string_view currentParentName = kProgram;
    std::string_view currentTableName;
    bool currentTableHasErrors = false;
    bool mainBlockSeen = false;
    bool sharedParameters = false;  ///< routine parameters are program-wide

    /// The line with the number, which must exist.
    SourceLine& GetSourceLine(std::int32_t lineNumber) {
        return sourceLines[static_cast<std::size_t>(lineNumber) - 1];
    }
    const SourceLine& GetSourceLine(std::int32_t lineNumber) const {
        return sourceLines[static_cast<std::size_t>(lineNumber) - 1];
    }

    /// A label that lives as long as the compilation.
    Label& AddLabel(std::string_view name);

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
