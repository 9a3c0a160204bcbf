#include "ui/terminal/terminal_window.h"

#include <QApplication>
#include <QBoxLayout>
#include <QCloseEvent>
#include <QDate>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QMdiSubWindow>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>
#include <algorithm>
#include <array>
#include <utility>

#include "config/encoding.h"
#include "ui/support/colours.h"
#include "ui/support/dialogs.h"
#include "ui/support/icons.h"
#include "ui/support/window_place.h"
#include "ui/terminal/connection_banner.h"
#include "ui/terminal/control_panel.h"
#include "ui/terminal/download_bar.h"
#include "ui/terminal/terminal_view.h"

namespace zentro {

namespace {

/// The screen is drawn once for all that arrives in this time.
constexpr std::chrono::milliseconds kScreenInterval{16};

/// A layout of the control panel: beside the screen or below it.
struct PanelPlace {
    bool beside;
    int columns;
};

constexpr std::array kPanelPlaces{PanelPlace{true, 2}, PanelPlace{true, 4}, PanelPlace{false, 4},
                                  PanelPlace{false, 8}};

/// The longest line that the board sends while a program is looked at.
constexpr int kPromptColumns = static_cast<int>(kDebugPrompt.size()) + 1;

}  // namespace

TerminalWindow::TerminalWindow(Workbench& workbench, TerminalSession& session, QWidget* parent)
    : QWidget(parent),
      workbench_(workbench),
      session_(session),
      controls_(session),
      portName_(
          QString::fromStdString(AsText(workbench.settings.GetSetting(SettingNumber::SerialPort)))),
      banner_(new ConnectionBanner(this)),
      txtTerminal_(new TerminalView(this)),
      downloadBar_(new DownloadBar(this)),
      panel_(new ControlPanel(session, controls_, this)) {
    setObjectName("frmTerminal");
    setWindowIcon(ThemedIcon("terminal"));
    setFocusProxy(txtTerminal_);
    screenTimer_.setSingleShot(true);
    screenTimer_.setInterval(kScreenInterval);
    connect(&screenTimer_, &QTimer::timeout, this, &TerminalWindow::UpdateScreen);
    MakeLayout();
    ConnectView();
    ConnectSession();
    ConnectDownload();
    connect(panel_, &ControlPanel::RunClicked, this, &TerminalWindow::Run);
    connect(panel_, &ControlPanel::LogClicked, this, &TerminalWindow::ToggleLog);
    SetFormColours();
    ShowConnection(session.IsConnected() ? portName_ : tr("not connected"));
    UpdateScreen();
}

void TerminalWindow::MakeLayout() {
    panelArea_ = new QScrollArea(this);
    panelArea_->setFrameShape(QFrame::NoFrame);
    panelArea_->setWidgetResizable(true);
    panelArea_->setFocusPolicy(Qt::NoFocus);
    panelArea_->setWidget(panel_);
    auto* column = new QVBoxLayout;
    column->addWidget(banner_);
    column->addWidget(txtTerminal_, 1);
    column->addWidget(downloadBar_);
    body_ = new QBoxLayout(QBoxLayout::TopToBottom, this);
    body_->setContentsMargins(6, 6, 6, 6);
    body_->addLayout(column, 1);
    body_->addWidget(panelArea_);
    ArrangePanel();
}

void TerminalWindow::ConnectView() {
    connect(txtTerminal_, &TerminalView::KeyPressed, this,
            [this](char key) { session_.PressKey(key); });
    connect(txtTerminal_, &TerminalView::AddressClicked, this, [this] {
        UpdateScreen();  // the session looks at the screen as it is now
        session_.DoubleClickAt(txtTerminal_->SelectionStart());
    });
    connect(txtTerminal_, &TerminalView::CaretMoved, this,
            [this] { session_.Screen().SetCursor(txtTerminal_->SelectionStart()); });
}

void TerminalWindow::ConnectSession() {
    connect(&session_, &TerminalSession::ScreenChanged, this, [this] {
        if (!screenTimer_.isActive()) screenTimer_.start();
    });
    connect(&session_, &TerminalSession::ConnectionInitOK, this, [this] {
        banner_->hide();
        ShowConnection(portName_);
    });
    connect(&session_, &TerminalSession::ConnectionLost, this, &TerminalWindow::LoseConnection);
    connect(&session_, &TerminalSession::PortIsBack, this, &TerminalWindow::OfferPort);
    connect(banner_, &ConnectionBanner::OpenAgainClicked, this, &TerminalWindow::Reopen);
}

void TerminalWindow::ConnectDownload() {
    connect(&session_, &TerminalSession::DownloadProgress, this,
            [this](double fraction, int linesSent) {
                ShowDownload(session_.IsDownloading());
                downloadBar_->ShowProgress(fraction, linesSent);
            });
    connect(&session_, &TerminalSession::DownloadFinished, this,
            [this](const DownloadResult& result) {
                ShowDownload(false);
                banner_->TellProgramLost(result.outcome == DownloadOutcome::LineLost);
            });
    connect(downloadBar_, &DownloadBar::CancelClicked, &session_, &TerminalSession::CancelDownload);
}

void TerminalWindow::UpdateScreen() {
    screenTimer_.stop();
    txtTerminal_->ShowText(session_.Screen().Text(), session_.Screen().Cursor());
}

void TerminalWindow::OpenConnection(const QString& portName) {
    portName_ = portName;
    session_.OpenConnection(portName.toStdString());
}

void TerminalWindow::ShowConnection(const QString& state) {
    setWindowTitle(tr("Terminal - %1").arg(state));
}

void TerminalWindow::LoseConnection() {
    ShowConnection(tr("%1 (connection lost)").arg(portName_));
    if (session_.CanReopen()) {
        OfferPort();
    } else {
        banner_->ShowLost(portName_);
    }
}

void TerminalWindow::OfferPort() {
    banner_->ShowBack(portName_);
    if (AsBoolean(workbench_.settings.GetSetting(SettingNumber::ReopenPortWhenBack))) Reopen();
}

void TerminalWindow::Reopen() {
    if (session_.CanReopen()) session_.Reopen();
}

void TerminalWindow::DownloadSource(const QString& path) {
    session_.DownloadSource(path.toStdString());
    ShowDownload(session_.IsDownloading());
}

void TerminalWindow::Stop() {
    panel_->Stop();
}

void TerminalWindow::ShowDownload(bool running) {
    // What the controls may do changes also when a download was too short for the bar.
    if (running == downloadBar_->isVisibleTo(this)) return panel_->Reflect();
    downloadBar_->ShowProgress(0, 0);
    // The focus goes to the bar and back, but never away from another window.
    QWidget* const focus = QApplication::focusWidget();
    const bool movesFocus =
        running ? focus == txtTerminal_ : focus != nullptr && downloadBar_->isAncestorOf(focus);
    if (running) {
        downloadBar_->show();
        if (movesFocus) downloadBar_->setFocus();
        txtTerminal_->setEnabled(false);
        setCursor(Qt::WaitCursor);
    } else {
        txtTerminal_->setEnabled(true);
        if (movesFocus) txtTerminal_->setFocus();
        downloadBar_->hide();
        unsetCursor();
    }
    panel_->Reflect();
}

/// Half a program may do anything with the motors.
void TerminalWindow::Run() {
    const bool asks = session_.LastDownload().MayLeavePart() && !session_.IsDebugging();
    if (asks && !workbench_.dialogs.AskYesNo(
                    this, tr("The last download did not arrive whole, so the board may hold only a "
                             "part of the program. Run it all the same?")))
        return;
    controls_.Run();
}

void TerminalWindow::ToggleLog() {
    if (session_.IsLogging()) {
        session_.EndLog();
    } else {
        StartLog();
    }
    panel_->Reflect();
}

void TerminalWindow::StartLog() {
    const QDate today = QDate::currentDate();
    const FileChoice choice{
        tr("Select where to Log KineTron session"),
        QString::fromStdString(AsText(workbench_.settings.GetSetting(SettingNumber::SourceFolder))),
        QString::fromStdString(SessionLogFileName(today.year(), today.month(), today.day())),
        "ZentroCompiler KineTron Logs (*.Log)|*.Log|All Files (*.*)|*.*", "Log"};
    const std::optional<QString> path = workbench_.dialogs.ChooseFileToSave(this, choice);
    if (!path || path->isEmpty()) return;
    const auto isThere = workbench_.disk->Ask(*path, Patience::WhileWanted,
                                              [path = *path] { return QFileInfo::exists(path); });
    if (!isThere) return;  // the user would not wait
    if (!*isThere &&
        !workbench_.dialogs.AskYesNo(
            this, tr("%1 does not exist. Create it?").arg(QDir::toNativeSeparators(*path))))
        return;
    const QString date = QLocale::system().toString(today, QLocale::LongFormat);
    const std::string problem =
        session_.StartLog(path->toStdString(), DecodeText(date.toStdString()));
    if (!problem.empty()) workbench_.dialogs.ShowMessage(this, QString::fromStdString(problem));
}

QString TerminalWindow::CopySelectedText() const {
    return txtTerminal_->SelectedText();
}

void TerminalWindow::SetFormColours() {
    const SettingsStore& settings = workbench_.settings;
    SetFormColours(AsInteger(settings.GetSetting(SettingNumber::TerminalTextColour)),
                   AsInteger(settings.GetSetting(SettingNumber::TerminalBackColour)));
}

void TerminalWindow::SetFormColours(std::int32_t foreground, std::int32_t background) {
    txtTerminal_->SetColours(ToColour(foreground, palette()), ToColour(background, palette()));
}

void TerminalWindow::closeEvent(QCloseEvent* event) {
    event->accept();
    if (std::exchange(closed_, true)) return;
    if (session_.IsDownloading()) session_.CancelDownload();
    session_.CloseConnection();
    emit FormClosing();
}

void TerminalWindow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    ArrangePanel();
}

void TerminalWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ApplicationPaletteChange) SetFormColours();
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) ArrangePanel();
}

/// How much of the screen and of the panel can be seen when the panel stands there: 0 to 1.
double TerminalWindow::Visibility(const QSize& whole, const QSize& panel, bool beside) const {
    const QSize screen =
        beside ? whole - QSize(panel.width(), 0) : whole - QSize(0, panel.height());
    const auto share = [](int room, int needed) {
        return std::clamp(static_cast<double>(room) / needed, 0.0, 1.0);
    };
    const QSize full = txtTerminal_->SizeFor(kPromptColumns, kScreenLines);
    return share(screen.width(), full.width()) * share(screen.height(), full.height()) *
           share(whole.width(), panel.width()) * share(whole.height(), panel.height());
}

/// Puts the panel where most can be seen.
void TerminalWindow::ArrangePanel() {
    const QSize whole = contentsRect().marginsRemoved(body_->contentsMargins()).size();
    const auto visibility = [&](const PanelPlace& place) {
        return Visibility(whole, panel_->SizeWith(place.columns), place.beside);
    };
    const PanelPlace place = *std::ranges::max_element(kPanelPlaces, {}, visibility);
    panel_->Arrange(place.columns);
    body_->setDirection(place.beside ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    QSize panel = panel_->SizeWith(place.columns);
    // A panel that does not fit has a scroll bar.
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    if (place.beside) {
        if (panel.height() > whole.height()) panel.rwidth() += bar;
        panelArea_->setMinimumSize(panel.width(), 0);
        panelArea_->setMaximumSize(panel.width(), QWIDGETSIZE_MAX);
    } else {
        if (panel.width() > whole.width()) panel.rheight() += bar;
        panelArea_->setMinimumSize(0, std::min(panel.height(), whole.height() / 2));
        panelArea_->setMaximumSize(QWIDGETSIZE_MAX, panel.height());
    }
}

}  // namespace zentro
