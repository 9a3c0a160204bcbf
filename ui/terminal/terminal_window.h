#pragma once

#include <QTimer>
#include <QWidget>
#include <cstdint>

#include "comms/manual_controls.h"
#include "comms/terminal_session.h"
#include "ui/support/workbench.h"

class QBoxLayout;
class QScrollArea;

namespace zentro {

class ConnectionBanner;
class ControlPanel;
class DownloadBar;
class TerminalView;

/// The window of a conversation with the board: the screen, and the controls that drive the board's
/// outputs by hand. The conversation itself is the session's.
class TerminalWindow : public QWidget {
    Q_OBJECT

  public:
    /// Both outlive the window. The session may be connected already.
    TerminalWindow(Workbench& workbench, TerminalSession& session, QWidget* parent = nullptr);

    /// Opens the session's connection and shows the port's name from then on.
    void OpenConnection(const QString& portName);

    /// Sends a program file to the board.
    void DownloadSource(const QString& path);

    /// What the STOP button does.
    void Stop();

    /// What is selected on the screen; lines end in "\n".
    QString CopySelectedText() const;

    /// Takes the screen's colours from the settings.
    void SetFormColours();
    /// Takes colours as the settings keep them.
    void SetFormColours(std::int32_t foreground, std::int32_t background);

    TerminalSession& Session() { return session_; }
    const ManualControls& Controls() const { return controls_; }

    QSize sizeHint() const override { return {760, 560}; }

  signals:
    void FormClosing();

  protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void MakeLayout();
    void ConnectView();
    void ConnectSession();
    void ConnectDownload();
    void UpdateScreen();
    void ShowConnection(const QString& state);
    void LoseConnection();
    void OfferPort();
    void Reopen();
    void ShowDownload(bool running);
    void Run();
    void ToggleLog();
    void StartLog();
    double Visibility(const QSize& whole, const QSize& panel, bool beside) const;
    void ArrangePanel();

    Workbench& workbench_;
    TerminalSession& session_;
    ManualControls controls_;
    QTimer screenTimer_;
    QString portName_;
    ConnectionBanner* banner_;
    TerminalView* txtTerminal_;
    DownloadBar* downloadBar_;
    ControlPanel* panel_;
    QScrollArea* panelArea_ = nullptr;
    QBoxLayout* body_ = nullptr;
    bool closed_ = false;
};

}  // namespace zentro
