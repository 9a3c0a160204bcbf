#include "ui/terminal/connection_banner.h"

#include <QAccessible>
#include <QApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>

namespace zentro {

namespace {

constexpr QColor kAmber(255, 176, 0);

/// A shade of amber on which the palette's text can be read, in light and in dark.
QColor Background(const QPalette& palette) {
    constexpr float kShare = 0.25F;
    const QColor window = palette.color(QPalette::Window);
    const auto mix = [](float one, float other) { return one * (1 - kShare) + other * kShare; };
    return QColor::fromRgbF(mix(window.redF(), kAmber.redF()),
                            mix(window.greenF(), kAmber.greenF()),
                            mix(window.blueF(), kAmber.blueF()));
}

}  // namespace

ConnectionBanner::ConnectionBanner(QWidget* parent)
    : QFrame(parent),
      icon_(new QLabel(this)),
      text_(new QLabel(this)),
      openAgain_(new QPushButton(tr("&Open Again"), this)) {
    setObjectName("connectionBanner");
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    text_->setObjectName("connectionText");
    text_->setWordWrap(true);
    openAgain_->setObjectName("BtnOpenAgain");
    openAgain_->setToolTip(tr("Connect to the port again"));
    openAgain_->setAutoDefault(false);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(8, 4, 8, 4);
    row->addWidget(icon_);
    row->addWidget(text_, 1);
    row->addWidget(openAgain_);
    connect(openAgain_, &QPushButton::clicked, this, &ConnectionBanner::OpenAgainClicked);
    Colour();
    hide();
}

void ConnectionBanner::ShowLost(const QString& portName) {
    Say(tr("The connection to %1 was lost. Check the cable and whether the board is switched on; "
           "what is on the screen stays.")
            .arg(portName),
        false);
}

void ConnectionBanner::ShowBack(const QString& portName) {
    Say(tr("The connection to %1 was lost. The port is there again.").arg(portName), true);
}

void ConnectionBanner::TellProgramLost(bool lost) {
    programLost_ = lost;
    if (isVisibleTo(parentWidget())) ShowText();
}

void ConnectionBanner::Say(const QString& text, bool canReopen) {
    said_ = text;
    openAgain_->setEnabled(canReopen);
    show();
    ShowText();
}

void ConnectionBanner::ShowText() {
    QStringList sentences{said_};
    if (programLost_)
        sentences << tr("The board does not hold the program: please download it again.");
    const QString text = sentences.join(u' ');
    text_->setText(text);
    setAccessibleName(text);
    QAccessibleEvent event(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

void ConnectionBanner::Colour() {
    QPalette colours = QApplication::palette();
    colours.setColor(QPalette::Window, Background(colours));
    if (colours != palette()) setPalette(colours);
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
    icon_->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(size));
}

void ConnectionBanner::changeEvent(QEvent* event) {
    QFrame::changeEvent(event);
    if (event->type() == QEvent::ApplicationPaletteChange) Colour();
}

}  // namespace zentro
