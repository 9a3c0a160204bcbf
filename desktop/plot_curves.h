#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "board/board.h"
#include "model/data_type.h"

namespace zentro {

/// What a curve can show of a board.
enum class PlotKind : std::uint8_t {
    Variable,
    Digital,
    Button,
    Analog,
    Timed,
    Pulses,  ///< counted since the start of the program
    StickX,
    StickY,
    Battery,
    Motor,  ///< backward below 0; servos alike
    Servo,
    Port,
    Led,
    Display,
    Note,
};

struct PlotSource {
    PlotKind kind{};
    std::uint32_t index = 0;         ///< input or output 1 is 0; of a variable its address
    DataType type = DataType::Byte;  ///< of a variable

    bool operator==(const PlotSource&) const = default;
};

/// Its value now, of what is on or off 1 or 0; nothing while there is none to be seen.
std::optional<std::int32_t> ValueOf(const PlotSource& source, const Board& board);

/// From this tick on the curve has the value, until its next point.
struct PlotPoint {
    std::uint32_t tick = 0;
    std::optional<std::int32_t> value;

    bool operator==(const PlotPoint&) const = default;
};

struct PlotCurve {
    PlotSource source;
    std::deque<PlotPoint> points;  ///< by ticks; neighbours differ in their values
};

/// How the values of chosen sources went, in ticks since the program was started. What is older
/// than ten minutes is forgotten.
class PlotCurves {
  public:
    static constexpr std::size_t kMost = 8;
    static constexpr std::uint32_t kKeptTicks = 10 * 60 * kTicksPerSecond;

    /// Chooses the curves, of which the first kMost are taken. Those that were chosen before go on,
    /// the others begin now.
    void Choose(const std::vector<PlotSource>& sources, const Board& board);
    /// A program begins: what was before is gone.
    void BeginRun(const Board& board);
    /// Takes the values as they are. Where the board's clock has gone back, so do the curves.
    void Look(const Board& board);

    const std::vector<PlotCurve>& Curves() const { return curves_; }
    std::uint32_t Now() const { return now_; }
    /// The oldest tick that is kept.
    std::uint32_t First() const { return now_ > kKeptTicks ? now_ - kKeptTicks : 0; }

  private:
    void Note(PlotCurve& curve, std::optional<std::int32_t> value) const;

    std::vector<PlotCurve> curves_;
    std::uint64_t begin_ = 0;  ///< by the board's clock
    std::uint32_t now_ = 0;
};

/// The value at a tick; nothing where the curve has none.
std::optional<std::int32_t> ValueAt(const PlotCurve& curve, std::uint32_t tick);

/// The points that draw the curve between two ticks as if all of them were drawn, when there is
/// room for so many columns: at most four for each, and the one before the first tick.
std::vector<PlotPoint> PointsToDraw(const PlotCurve& curve, std::uint32_t from, std::uint32_t to,
                                    std::uint32_t columns);

/// A table with a line for each tick at which something changed, for spreadsheets: fields with
/// commas between, the seconds in the first. `names` are those of the curves.
std::string CsvOf(const PlotCurves& curves, const std::vector<std::string>& names);

}  // namespace zentro
