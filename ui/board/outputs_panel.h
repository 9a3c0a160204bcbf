#pragma once

#include <QWidget>
#include <array>

#include "board/board.h"

namespace zentro {

class DisplayWidget;
class LampWidget;
class MotorWidget;
class NoteWidget;
class ServoWidget;

/// The picture of the board with everything that it can move, light and show.
class OutputsPanel : public QWidget {
    Q_OBJECT

  public:
    explicit OutputsPanel(QWidget* parent);

    void Show(const Board& board);

    /// Higher, its parts would be torn apart.
    static constexpr int kMostHeight = 250;

    /// Its parts can be drawn smaller than they would like to be.
    QSize minimumSizeHint() const override { return {320, 170}; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void LayOut();
    void FitTitles();

    std::array<MotorWidget*, 4> motors_{};
    std::array<ServoWidget*, 3> servos_{};
    std::array<LampWidget*, 2> leds_{};
    std::array<LampWidget*, 3> ports_{};
    DisplayWidget* display_;
    NoteWidget* note_;
    std::uint64_t shownClock_ = 0;
};

}  // namespace zentro
