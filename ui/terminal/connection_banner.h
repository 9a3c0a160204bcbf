#pragma once

#include <QFrame>

class QLabel;
class QPushButton;

namespace zentro {

/// Says above the terminal's screen that the connection was lost, and blocks nothing.
class ConnectionBanner : public QFrame {
    Q_OBJECT

  public:
    explicit ConnectionBanner(QWidget* parent);

    void ShowLost(const QString& portName);
    void ShowBack(const QString& portName);

  signals:
    void OpenAgainClicked();

  protected:
    void changeEvent(QEvent* event) override;

  private:
    void Say(const QString& text, bool canReopen);
    void Colour();

    QLabel* icon_;
    QLabel* text_;
    QPushButton* openAgain_;
};

}  // namespace zentro
