#include "ui/terminal/terminal_window.h"

#include <QBoxLayout>
#include <QCloseEvent>
#include <QDate>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QScrollArea>
#include <QStyle>
#include <algorithm>
#include <utility>

#include "config/encoding.h"
#include "ui/support/colours.h"
#include "ui/support/dialogs.h"
#include "ui/support/window_place.h"
#include "ui/terminal/connection_banner.h"
#include "ui/terminal/control_panel.h"
#include "ui/terminal/download_bar.h"
#include "ui/terminal/terminal_view.h"

namespace zentro {

namespace {

/// The screen is drawn once for all that arrives in this time.
constexpr std::chrono::milliseconds kScreenInterval{16};

/// The layouts of the control panel: beside the screen, and below it.
constexpr int kColumnsBeside = 2;
constexpr int kColumnsBelow = 4;

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
    setFocusProxy(txtTerminal_);
    screenTimer_.setSingleShot(true);
    screenTimer_.setInterval(kScreenInterval);
    connect(&screenTimer_, &QTimer::timeout, this, &TerminalWindow::UpdateScreen);
    MakeLayout();
    ConnectView();
    ConnectSession();
    ConnectDownload();
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
    connect(&session_, &TerminalSession::DownloadFinished, this, [this] { ShowDownload(false); });
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
    ShowConnection(tr("%1 lost").arg(portName_));
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

void TerminalWindow::ShowDownload(bool running) {
    if (running == downloadBar_->isVisibleTo(this)) return;
    downloadBar_->ShowProgress(0, 0);
    downloadBar_->setVisible(running);
    const bool hadFocus = txtTerminal_->hasFocus();
    txtTerminal_->setEnabled(!running);
    panel_->Reflect();
    if (running) {
        setCursor(Qt::WaitCursor);
        if (hadFocus) downloadBar_->setFocus();
    } else {
        unsetCursor();
        if (isActiveWindow()) txtTerminal_->setFocus();
    }
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
    if (!QFileInfo::exists(*path) &&
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

void TerminalWindow::PositionForm() {
    RestorePlace(*this, workbench_.settings, kTerminalWindowPlace);
    formPositioned_ = true;
}

void TerminalWindow::closeEvent(QCloseEvent* event) {
    event->accept();
    if (std::exchange(closed_, true)) return;
    if (formPositioned_) RememberPlace(*this, workbench_.settings, kTerminalWindowPlace);
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

/// Puts the panel where more of the screen can be read: beside it or below.
void TerminalWindow::ArrangePanel() {
    const QSize whole = contentsRect().marginsRemoved(body_->contentsMargins()).size();
    const QSize full = txtTerminal_->SizeFor(kPromptColumns, kScreenLines);
    const QSize beside = panel_->SizeWith(kColumnsBeside);
    const QSize below = panel_->SizeWith(kColumnsBelow);
    const auto readable = [&](int width, int height) {
        return std::clamp(double(width) / full.width(), 0.0, 1.0) *
               std::clamp(double(height) / full.height(), 0.0, 1.0);
    };
    const bool goesBeside = readable(whole.width() - beside.width(), whole.height()) >=
                            readable(whole.width(), whole.height() - below.height());
    panel_->Arrange(goesBeside ? kColumnsBeside : kColumnsBelow);
    body_->setDirection(goesBeside ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    const QSize panel = goesBeside ? beside : below;
    // Room for the scroll bar of the panel where it does not fit.
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    const int extraWidth = panel.height() > whole.height() ? bar : 0;
    const int extraHeight = panel.width() > whole.width() ? bar : 0;
    panelArea_->setMinimumSize(goesBeside ? panel.width() + extraWidth : 0, 0);
    panelArea_->setMaximumSize(goesBeside ? panel.width() + extraWidth : QWIDGETSIZE_MAX,
                               goesBeside ? QWIDGETSIZE_MAX : panel.height() + extraHeight);
    if (!goesBeside)
        panelArea_->setMinimumHeight(std::min(panel.height() + extraHeight, whole.height() / 2));
}

}  // namespace zentro
