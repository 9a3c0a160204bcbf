#pragma once

#include <QColor>
#include <QString>
#include <QWidget>

#include "board/devices.h"

namespace zentro {

/// An LED or an action port with its name: it shines when it is on.
class LampWidget : public QWidget {
    Q_OBJECT

  public:
    LampWidget(const QString& name, const QColor& light, QWidget* parent);

    void Show(bool on);

    QSize sizeHint() const override { return {62, 72}; }
    QSize minimumSizeHint() const override { return {30, 56}; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QColor light_;
    bool on_ = false;
};

/// The number display: three digits of seven segments.
class DisplayWidget : public QWidget {
    Q_OBJECT

  public:
    explicit DisplayWidget(QWidget* parent);

    void Show(const Display& display);

    QSize sizeHint() const override { return {132, 92}; }
    QSize minimumSizeHint() const override { return {64, 66}; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QString Digits() const;

    Display display_;
};

/// The sounder: a note with the name of its pitch.
class NoteWidget : public QWidget {
    Q_OBJECT

  public:
    explicit NoteWidget(QWidget* parent);

    void Show(std::uint8_t note);

    QSize sizeHint() const override { return {84, 72}; }
    QSize minimumSizeHint() const override { return {40, 56}; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    std::uint8_t note_ = 0;
};

}  // namespace zentro
