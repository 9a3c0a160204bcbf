#include "ui/board/outputs_panel.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/board/board_look.h"
#include "ui/board/drive_widgets.h"
#include "ui/board/lamp_widgets.h"

namespace zentro {

namespace {

constexpr QColor kLedLight{0xFF, 0xC4, 0x2E};
constexpr QColor kPortLight{0x5F, 0xE0, 0x7A};
constexpr std::int64_t kMostTicksPerPicture = 5;  // a wheel that turns faster seems to stand still
constexpr int kMargin = 18;
constexpr double kLeastShare = 0.6;  // of the font's size, in titles

}  // namespace

OutputsPanel::OutputsPanel(QWidget* parent)
    : QWidget(parent), display_(new DisplayWidget(this)), note_(new NoteWidget(this)) {
    setObjectName("Outputs");
    setMaximumHeight(kMostHeight);
    setAccessibleName(tr("Outputs of the board"));
    for (std::size_t index = 0; index < motors_.size(); ++index)
        motors_[index] = new MotorWidget(static_cast<int>(index) + 1, this);
    for (std::size_t index = 0; index < servos_.size(); ++index)
        servos_[index] = new ServoWidget(static_cast<int>(index) + 1, this);
    leds_ = {new LampWidget(tr("Left LED"), kLedLight, this),
             new LampWidget(tr("Right LED"), kLedLight, this)};
    leds_[0]->setObjectName("LeftLed");
    leds_[1]->setObjectName("RightLed");
    for (std::size_t index = 0; index < ports_.size(); ++index) {
        const QString number = QString::number(index + 1);
        ports_[index] = new LampWidget(tr("Port %1").arg(number), kPortLight, this);
        ports_[index]->setObjectName("Port" + number);
    }
    LayOut();
}

void OutputsPanel::LayOut() {
    auto* above = new QHBoxLayout;
    above->setSpacing(4);
    above->addWidget(leds_[0], 2);
    for (MotorWidget* motor : motors_)
        above->addWidget(motor, 3);
    above->addWidget(leds_[1], 2);
    auto* below = new QHBoxLayout;
    below->setSpacing(4);
    for (ServoWidget* servo : servos_)
        below->addWidget(servo, 8);
    below->addWidget(display_, 10);
    below->addWidget(note_, 5);
    for (LampWidget* port : ports_)
        below->addWidget(port, 4);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(kMargin, kMargin - 7, kMargin, kMargin - 7);
    rows->addLayout(above, 6);
    rows->addLayout(below, 5);
}

void OutputsPanel::Show(const Board& board) {
    const auto passed = static_cast<std::int64_t>(board.clock - shownClock_);
    shownClock_ = board.clock;
    const auto ticks =
        static_cast<int>(std::clamp(passed, -kMostTicksPerPicture, kMostTicksPerPicture));
    const Outputs& outputs = board.outputs;
    for (std::size_t index = 0; index < motors_.size(); ++index)
        motors_[index]->Show(outputs.motors[index], ticks);
    for (std::size_t index = 0; index < servos_.size(); ++index)
        servos_[index]->Show(outputs.servos[index]);
    for (std::size_t index = 0; index < leds_.size(); ++index)
        leds_[index]->Show(outputs.leds[index]);
    for (std::size_t index = 0; index < ports_.size(); ++index)
        ports_[index]->Show(outputs.ports[index]);
    display_->Show(outputs.display);
    note_->Show(outputs.note);
}

void OutputsPanel::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    FitTitles();
}

/// All titles have one size: that of the one with the least room.
void OutputsPanel::FitTitles() {
    QFont bold = font();
    bold.setBold(true);
    const QFontMetricsF metrics(bold);
    const QList<QWidget*> parts = findChildren<QWidget*>();
    double share = 1;
    for (const QWidget* part : parts)
        share = std::min(share,
                         part->width() / metrics.horizontalAdvance(part->accessibleName() + ' '));
    QFont titles = font();
    titles.setPointSizeF(titles.pointSizeF() * std::max(share, kLeastShare));
    for (QWidget* part : parts)
        part->setFont(titles);
}

void OutputsPanel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF board = QRectF(rect()).adjusted(1, 1, -1, -1);
    painter.setPen(QPen(kBoardEdge, 2));
    painter.setBrush(kBoardGreen);
    painter.drawRoundedRect(board, 10, 10);
    painter.setPen(QPen(kGold, 2.5));
    painter.setBrush(palette().window());
    constexpr double kHole = 3.5;
    const QRectF holes = board.adjusted(9, 9, -9, -9);
    for (const QPointF& corner :
         {holes.topLeft(), holes.topRight(), holes.bottomLeft(), holes.bottomRight()})
        painter.drawEllipse(corner, kHole, kHole);
}

}  // namespace zentro
