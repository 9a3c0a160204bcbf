#pragma once

#include <QTimer>
#include <QWidget>

namespace zentro {

/// "Version 0.1 Build 0" for "0.1.0".
QString VersionText(const QString& version);

/// The window that is seen while the program starts. Half a second after it is shown it asks for
/// the main window, and half a second later it closes; a key or a click closes it at once. The main
/// window is asked for once in any case. It deletes itself.
class SplashWindow : public QWidget {
    Q_OBJECT

  public:
    static constexpr int kTick = 500;  ///< milliseconds

    explicit SplashWindow(QWidget* parent = nullptr);

  signals:
    void ShowMainWindow();

  protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    void Tick();
    void AskForMainWindow();

    QTimer timer_;
    int ticks_ = 0;
    bool askedForMainWindow_ = false;
};

}  // namespace zentro
