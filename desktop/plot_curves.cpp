#include "desktop/plot_curves.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace zentro {

namespace {

std::int32_t Signed(const Drive& drive) {
    return drive.direction == kBackward ? -std::int32_t{drive.value} : drive.value;
}

std::int32_t OfVariable(const PlotSource& source, const Memory& memory) {
    if (source.index + 1 >= kMemorySize) return 0;
    if (IsWordSized(source.type)) return memory.Word(source.index);
    const std::uint8_t byte = memory.Byte(source.index);
    return source.type == DataType::Flag ? byte != 0 : byte;
}

/// The first point behind the tick.
auto Behind(const std::deque<PlotPoint>& points, std::uint32_t tick) {
    return std::ranges::upper_bound(points, tick, {}, &PlotPoint::tick);
}

/// First and last, lowest and highest of the points of a column, in their order.
class Column {
  public:
    void Add(const PlotPoint& point) {
        if (!first_) first_ = point;
        last_ = point;
        if (!point.value) return;
        if (!low_ || point.value < low_->value) low_ = point;
        if (!high_ || point.value > high_->value) high_ = point;
    }

    void MoveTo(std::vector<PlotPoint>& points) {
        std::vector<PlotPoint> mine;
        for (const auto& point : {first_, low_, high_, last_}) {
            if (point) mine.push_back(*point);
        }
        std::ranges::sort(mine, {}, &PlotPoint::tick);
        const auto [doubled, end] = std::ranges::unique(mine);
        points.insert(points.end(), mine.begin(), doubled);
        *this = {};
    }

  private:
    std::optional<PlotPoint> first_;
    std::optional<PlotPoint> low_;
    std::optional<PlotPoint> high_;
    std::optional<PlotPoint> last_;
};

std::string Quoted(const std::string& text) {
    std::string quoted = "\"";
    for (const char character : text) {
        if (character == '"') quoted += '"';
        quoted += character;
    }
    return quoted + '"';
}

std::string Seconds(std::uint32_t ticks) {
    const std::string hundredths = std::to_string(ticks % kTicksPerSecond);
    return std::to_string(ticks / kTicksPerSecond) + '.' + std::string(2 - hundredths.size(), '0') +
           hundredths;
}

}  // namespace

std::optional<std::int32_t> ValueOf(const PlotSource& source, const Board& board) {
    const Inputs& in = board.inputs;
    const Outputs& out = board.outputs;
    const std::uint32_t at = source.index;
    switch (source.kind) {
        case PlotKind::Variable: return OfVariable(source, board.memory);
        case PlotKind::Digital: return in.digital.at(at);
        case PlotKind::Button: return in.buttons.at(at);
        case PlotKind::Analog: return in.analog.at(at);
        case PlotKind::Timed: return in.timed.at(at);
        case PlotKind::Pulses:
            return static_cast<std::uint16_t>(in.pulses.at(at) -
                                              board.devices.pulsesAtStart.at(at));
        case PlotKind::StickX: return in.joysticks.at(at).x;
        case PlotKind::StickY: return in.joysticks.at(at).y;
        case PlotKind::Battery: return in.battery;
        case PlotKind::Motor: return Signed(out.motors.at(at));
        case PlotKind::Servo: return Signed(out.servos.at(at));
        case PlotKind::Port: return out.ports.at(at);
        case PlotKind::Led: return out.leds.at(at);
        case PlotKind::Display:
            if (out.display.form == Display::Form::Dark) return std::nullopt;
            return out.display.value;
        case PlotKind::Note: return out.note;
    }
    return std::nullopt;
}

void PlotCurves::Choose(const std::vector<PlotSource>& sources, const Board& board) {
    std::vector<PlotCurve> chosen;
    for (const PlotSource& source : sources) {
        if (chosen.size() == kMost) break;
        const auto old = std::ranges::find(curves_, source, &PlotCurve::source);
        chosen.push_back(old == curves_.end() ? PlotCurve{source, {}} : std::move(*old));
        if (old != curves_.end()) curves_.erase(old);
    }
    curves_ = std::move(chosen);
    Look(board);
}

void PlotCurves::BeginRun(const Board& board) {
    for (PlotCurve& curve : curves_) {
        curve.points.clear();
    }
    begin_ = board.clock;
    Look(board);
}

void PlotCurves::Look(const Board& board) {
    begin_ = std::min(begin_, board.clock);
    now_ = static_cast<std::uint32_t>(
        std::min<std::uint64_t>(board.clock - begin_, std::numeric_limits<std::uint32_t>::max()));
    for (PlotCurve& curve : curves_) {
        Note(curve, ValueOf(curve.source, board));
    }
}

/// Within a tick the last value counts.
void PlotCurves::Note(PlotCurve& curve, std::optional<std::int32_t> value) const {
    std::deque<PlotPoint>& points = curve.points;
    while (!points.empty() && points.back().tick >= now_) {
        points.pop_back();
    }
    if (points.empty() || points.back().value != value) points.push_back({now_, value});
    while (points.size() > 1 && points[1].tick <= First()) {
        points.pop_front();
    }
}

std::optional<std::int32_t> ValueAt(const PlotCurve& curve, std::uint32_t tick) {
    const auto behind = Behind(curve.points, tick);
    return behind == curve.points.begin() ? std::nullopt : std::prev(behind)->value;
}

std::vector<PlotPoint> PointsToDraw(const PlotCurve& curve, std::uint32_t from, std::uint32_t to,
                                    std::uint32_t columns) {
    auto point = Behind(curve.points, from);
    const auto end = Behind(curve.points, to);
    if (point != curve.points.begin()) --point;
    const auto count = static_cast<std::size_t>(end - point);
    if (count <= std::size_t{4} * columns) return {point, end};
    std::vector<PlotPoint> points;
    points.reserve(std::size_t{4} * columns + 1);
    if (point->tick < from) points.push_back(*point++);
    Column column;
    std::uint64_t present = 0;
    for (; point != end; ++point) {
        const std::uint64_t wanted =
            std::uint64_t{point->tick - from} * columns / (std::uint64_t{to - from} + 1);
        if (wanted != present) column.MoveTo(points);
        present = wanted;
        column.Add(*point);
    }
    column.MoveTo(points);
    return points;
}

std::string CsvOf(const PlotCurves& curves, const std::vector<std::string>& names) {
    std::string text = "seconds";
    std::vector<std::uint32_t> ticks{curves.First(), curves.Now()};
    for (std::size_t index = 0; index < curves.Curves().size(); ++index) {
        text += ',' + Quoted(names.at(index));
        for (const PlotPoint& point : curves.Curves()[index].points) {
            ticks.push_back(std::max(point.tick, curves.First()));
        }
    }
    text += '\n';
    std::ranges::sort(ticks);
    const auto [doubled, end] = std::ranges::unique(ticks);
    ticks.erase(doubled, end);
    for (const std::uint32_t tick : ticks) {
        text += Seconds(tick);
        for (const PlotCurve& curve : curves.Curves()) {
            const auto value = ValueAt(curve, tick);
            text += ',' + (value ? std::to_string(*value) : std::string());
        }
        text += '\n';
    }
    return text;
}

}  // namespace zentro
