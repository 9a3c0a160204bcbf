#pragma once

#include <cstdint>
#include <vector>

#include "config/message_code.h"
#include "model/source_line.h"

namespace zentro {

struct Compilation;

/// The blocks that a line can be inside of.
enum class CompileState : std::uint8_t {
    Outside = 0,
    Table = 1,
    Routine = 2,
    Event = 3,
    Program = 4,
    If = 5,
    While = 6,
    Repeat = 7,
    Select = 8,
    Loop = 9,
    Aborted = 10,  ///< the last: after a wrong nesting: nothing is opened or closed any more
};

/// The blocks that are open, innermost last.
class CompileStates {
  public:
    struct Block {
        CompileState state = CompileState::Outside;
        std::int32_t firstLineNo = 0;  ///< the line that opened the block
        std::int32_t lastLineNo = 0;   ///< the line of its chain that was met last
    };

    CompileState Current() const {
        return blocks_.empty() ? CompileState::Outside : blocks_.back().state;
    }
    /// The innermost block. There must be one.
    const Block& Innermost() const { return blocks_.back(); }

    void Push(const Block& block) { blocks_.push_back(block); }
    void Pop() { blocks_.pop_back(); }
    void Clear() { blocks_.clear(); }

  private:
    std::vector<Block> blocks_;
};

/// Enters a block with the line. Posts a message against the line and aborts when the block may
/// not stand there.
void ChangeCompileState(Compilation& compilation, CompileState state, SourceLine& line);

/// Leaves the innermost block, which must be of the given state, and links the line into the
/// block's chain. Posts a message and aborts when another block is open. False when no block was
/// left: nothing is open, or the run is aborted.
bool ExitCompileState(Compilation& compilation, CompileState state, SourceLine& line);

/// Leaves the block with a line in its middle and goes on with it.
void ContinueCompileState(Compilation& compilation, CompileState state, SourceLine& line);

/// Posts that the innermost block, if one is open, was not ended, against the line that opened it.
void PostOpenBlock(Compilation& compilation);

/// A block inside a program, routine or event: IF, LOOP. Whatever is open ends with any other.
bool IsInner(CompileState state);

/// The message for a block that should have been ended.
MessageCode NotEndedMessage(CompileState state);

}  // namespace zentro
