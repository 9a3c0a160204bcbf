#pragma once

#include <QWidget>

class QLabel;
class QProgressBar;

namespace zentro {

/// Shows how far a download has come, with a way to end it.
class DownloadBar : public QWidget {
    Q_OBJECT

  public:
    explicit DownloadBar(QWidget* parent);

    void ShowProgress(double fraction, int linesSent);

  signals:
    void CancelClicked();

  private:
    QLabel* lines_;
    QProgressBar* bar_;
};

}  // namespace zentro
