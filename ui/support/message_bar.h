#pragma once

#include <QStatusBar>

namespace zentro {

/// A status bar that shortens a message that is too long for it, well before its panels begin. The
/// whole message is in its tool tip.
class MessageBar : public QStatusBar {
    Q_OBJECT

  public:
    explicit MessageBar(QWidget* parent = nullptr) : QStatusBar(parent) {}

    /// The message as far as there is room for it, on one line.
    QString ShownMessage() const;

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    QRect MessageRect() const;
};

}  // namespace zentro
