#pragma once

#include <QFrame>
#include <QString>

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
    /// Whether the loss ended a download, which is told beside it.
    void TellProgramLost(bool lost);

  signals:
    void OpenAgainClicked();

  protected:
    void changeEvent(QEvent* event) override;

  private:
    void Say(const QString& text, bool canReopen);
    void ShowText();
    void Colour();

    QLabel* icon_;
    QLabel* text_;
    QPushButton* openAgain_;
    QString said_;
    bool programLost_ = false;
};

}  // namespace zentro
