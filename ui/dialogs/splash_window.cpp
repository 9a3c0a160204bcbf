#include "ui/dialogs/splash_window.h"

#include <QCloseEvent>
#include <QLabel>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>

#include "ui/support/icons.h"
#include "ui/support/workbench.h"

namespace zentro {

namespace {

QLabel* MakeLabel(const char* name, const QString& text, double scale) {
    auto* label = new QLabel(text);
    label->setObjectName(name);
    label->setAlignment(Qt::AlignCenter);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * scale);
    font.setBold(scale > 1);
    label->setFont(font);
    return label;
}

}  // namespace

QString VersionText(const QString& version) {
    const QStringList parts = version.split('.');
    return QString("Version %1.%2 Build %3")
        .arg(parts.value(0), parts.value(1, "0"), parts.value(2, "0"));
}

SplashWindow::SplashWindow(QWidget* parent)
    : QWidget(parent, Qt::SplashScreen | Qt::FramelessWindowHint) {
    setObjectName("frmSplash");
    setWindowTitle(kProgramTitle);
    setAttribute(Qt::WA_DeleteOnClose);
    setFocusPolicy(Qt::StrongFocus);
    auto* picture = new ProgramPicture;
    picture->setFixedSize(112, 112);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(32, 28, 32, 24);
    layout->addWidget(picture, 0, Qt::AlignHCenter);
    layout->addSpacing(8);
    layout->addWidget(MakeLabel("lblTitle", kProgramTitle, 2.2));
    layout->addWidget(MakeLabel("lblPurpose", "Programs for the Kinetron board", 1));
    layout->addSpacing(8);
    layout->addWidget(MakeLabel("lblVersion", VersionText(ZENTRO_VERSION), 1));
    setFixedSize(sizeHint().expandedTo({400, 280}));
    timer_.setInterval(kTick);
    connect(&timer_, &QTimer::timeout, this, &SplashWindow::Tick);
}

void SplashWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    const QRect area = screen()->availableGeometry();
    move(area.center() - rect().center());
    timer_.start();
}

void SplashWindow::Tick() {
    if (++ticks_ > 1) {
        close();
        return;
    }
    AskForMainWindow();
    raise();
}

void SplashWindow::AskForMainWindow() {
    if (askedForMainWindow_) return;
    askedForMainWindow_ = true;
    emit ShowMainWindow();
}

void SplashWindow::closeEvent(QCloseEvent* event) {
    timer_.stop();
    AskForMainWindow();
    QWidget::closeEvent(event);
}

void SplashWindow::keyPressEvent(QKeyEvent*) {
    close();
}

void SplashWindow::mousePressEvent(QMouseEvent*) {
    close();
}

void SplashWindow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Base));
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
}

}  // namespace zentro
