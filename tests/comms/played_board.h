#pragma once

#include <QTimer>
#include <chrono>
#include <deque>
#include <map>
#include <string>
#include <vector>

#include "tests/comms/board_fixture.h"

namespace zentro {

/// What a played board does wrong at one step.
struct Deed {
    enum class Kind : std::uint8_t {
        EchoLate,
        AnswerLate,
        Mute,        ///< neither echo nor answer
        NoEcho,      ///< the answer comes all the same
        Instead,     ///< the text is the answer
        Before,      ///< the text comes before the echo
        After,       ///< the text comes behind the answer
        Twice,       ///< echo and answer come twice
        CutBefore,   ///< the cable is pulled before the echo
        CutBetween,  ///< ... between echo and answer
        CutAfter,
    };

    std::string step;
    Kind kind;
    std::string text = {};
    std::chrono::milliseconds late{0};
};

/// A board on a pseudo-terminal that follows the protocol, one step after the other, but for its
/// deeds. A step is a line that it is sent, "L" of the loader, or "end", the end of a load.
class PlayedBoard {
  public:
    /// The answers are those of the steps that have one: "W" has from the beginning.
    PlayedBoard(std::map<std::string, std::string> answers, std::vector<Deed> deeds);

    const std::string& PortName() const { return board_.PortName(); }

  private:
    struct Move {
        std::chrono::milliseconds late{0};
        std::string text;
        bool cuts = false;
    };

    void Take(char character);
    void DoStep(const std::string& step, std::string echo);
    void Queue(Move move) { moves_.push_back(std::move(move)); }
    void MakeMoves();

    ScriptedBoard board_;
    std::map<std::string, std::string> answers_;
    std::vector<Deed> deeds_;
    std::string line_;
    bool loading_ = false;
    std::deque<Move> moves_;  ///< in order: what is late holds up what follows
    QTimer timer_;
};

}  // namespace zentro
