#include "ui/support/icons.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>
#include <memory>

namespace zentro {

namespace {

/// Draws a picture whose lines are "currentColor" in the colour that the palette has when it is
/// drawn, so that it follows a change between light and dark.
class LineIconEngine : public QIconEngine {
  public:
    explicit LineIconEngine(QByteArray picture) : picture_(std::move(picture)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const auto role =
            mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::ButtonText;
        QByteArray coloured = picture_;
        coloured.replace("currentColor",
                         QApplication::palette().color(group, role).name().toLatin1());
        QSvgRenderer(coloured).render(painter, rect);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, {QPoint(0, 0), size}, mode, state);
        return pixmap;
    }

    QIconEngine* clone() const override { return new LineIconEngine(*this); }

  private:
    QByteArray picture_;
};

}  // namespace

QIcon ThemedIcon(const QString& name) {
    QFile file(":/icons/" + name + ".svg");
    if (!file.open(QIODevice::ReadOnly)) return {};
    return QIcon(new LineIconEngine(file.readAll()));
}

QIcon ExampleIcon(const QString& name) {
    const QIcon picture = ThemedIcon("example-" + name);
    return picture.isNull() ? ThemedIcon("virtual-board") : picture;
}

// A picture without "currentColor" is drawn as it is.
QIcon ProgramIcon() {
    return ThemedIcon("zentro");
}

void ProgramPicture::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    ProgramIcon().paint(&painter, rect());
}

}  // namespace zentro
