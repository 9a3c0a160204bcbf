// Measures the picture of the plot: eight curves that change in every tick of ten minutes, painted
// again and again while time goes on, beside a window of the same size that paints nothing but its
// background. bench/plot builds and runs it.

#include <QApplication>
#include <QPainter>
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <limits>
#include <memory>
#include <vector>

#include "desktop/plot_curves.h"
#include "ui/board/plot_view.h"

namespace {

using namespace zentro;

constexpr QSize kSize{1000, 500};
constexpr int kRounds = 7;
constexpr int kFrames = 60;  // of a round

/// A window that is painted without anything in it.
class EmptyWindow : public QWidget {
    void paintEvent(QPaintEvent*) override {
        QPainter(this).fillRect(rect(), palette().color(QPalette::Base));
    }
};

/// What a frame used of the processor, in milliseconds: the fastest round.
double MillisecondsOfFrame(const std::function<void()>& frame) {
    double fastest = std::numeric_limits<double>::max();
    for (int round = 0; round < kRounds; ++round) {
        const std::clock_t begin = std::clock();
        for (int count = 0; count < kFrames; ++count) {
            frame();
            QApplication::processEvents();
            QApplication::processEvents();  // what was queued while the first ones were handled
        }
        const auto used = static_cast<double>(std::clock() - begin);
        fastest = std::min(fastest, used * 1e3 / CLOCKS_PER_SEC / kFrames);
    }
    return fastest;
}

class Measurement {
  public:
    Measurement() {
        std::vector<PlotSource> sources;
        for (std::uint32_t index = 0; index < 6; ++index)
            sources.push_back({PlotKind::Analog, index});
        sources.push_back({PlotKind::Motor, 0});
        sources.push_back({PlotKind::Battery});
        curves_.Choose(sources, *board_);
        while (board_->clock < PlotCurves::kKeptTicks)
            LetATickPass();
        std::vector<CurveLook> looks;
        for (std::size_t index = 0; index < sources.size(); ++index)
            looks.push_back({"Curve", QColor::fromHsv(static_cast<int>(index) * 40, 255, 160),
                             index >= sources.size() / 2});
        view_.resize(kSize);
        view_.show();
        view_.SetLooks(looks);
    }

    double Frame(PlotView::Following following) {
        view_.Follow(following);
        return MillisecondsOfFrame([this] {
            LetATickPass();
            view_.Refresh();
        });
    }

  private:
    /// All values change, at different paces.
    void LetATickPass() {
        ++board_->clock;
        for (std::size_t index = 0; index < 6; ++index)
            board_->inputs.analog[index] =
                static_cast<std::uint8_t>(board_->clock * (index + 1) / 2 + (board_->clock & 1U));
        board_->outputs.motors[0].value = static_cast<std::uint8_t>(board_->clock % 101);
        board_->inputs.battery = static_cast<std::uint8_t>(board_->clock * 7 % 256);
        curves_.Look(*board_);
    }

    std::unique_ptr<Board> board_ = std::make_unique<Board>();
    PlotCurves curves_;
    PlotView view_{curves_, nullptr};
};

void Report(const char* what, double ours, double peer) {
    std::printf("result\tplot, a frame of %s, an empty one\t%.2f ms\t%.2f ms\t%.2f\t<= 40\n", what,
                ours, peer, ours / peer);
    std::printf("result\tplot, frames a second of %s\t\t\t%.0f\t>= 60\n", what, 1000 / ours);
}

}  // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    EmptyWindow empty;
    empty.resize(kSize);
    empty.show();
    const double peer = MillisecondsOfFrame([&empty] { empty.update(); });
    Measurement measurement;
    Report("eight curves over ten minutes", measurement.Frame(PlotView::Following::All), peer);
    Report("their last 20 seconds", measurement.Frame(PlotView::Following::Latest), peer);
    return 0;
}
