#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <tuple>

#include "board/board.h"

namespace zentro {

/// Presses of the board's buttons by somebody who may be quicker than a program that looks at them
/// now and then. A button that was let go stays down until the program has looked at it, or has had
/// every chance to.
class ButtonPresses {
  public:
    static constexpr std::size_t kButtons = std::tuple_size_v<decltype(Inputs::buttons)>;

    void Begin(const Board& board, std::size_t button);
    void End(std::size_t button);
    bool IsDown(std::size_t button) const { return presses_[button].phase != Phase::None; }

    /// The buttons that were let go and come up now. `timePasses`: for a board without a running
    /// program.
    std::array<bool, kButtons> TakeThoseThatComeUp(const Board& board, bool timePasses);

  private:
    enum class Phase : std::uint8_t { None, Held, LetGo };

    struct Press {
        Phase phase = Phase::None;
        std::uint64_t tick = 0;   ///< when it began
        std::uint64_t steps = 0;  ///< of the program, at its beginning
    };

    static bool HasLasted(const Press& press, std::size_t button, const Board& board,
                          bool timePasses);

    std::array<Press, kButtons> presses_{};
};

}  // namespace zentro
