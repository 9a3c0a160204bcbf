#include "ui/terminal/variables_window.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QTime>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "desktop/variable_values.h"
#include "ui/support/dialogs.h"
#include "ui/support/icons.h"
#include "ui/terminal/variable_list.h"

namespace zentro {

namespace {

constexpr std::chrono::milliseconds kLiveInterval{100};
constexpr int kLiveMarkedTimes = 10;  // a second, to be seen
constexpr const char* kIdleCaption = "Refresh Variables";
constexpr const char* kReadingCaption = "Refreshing........";

}  // namespace

VariablesWindow::VariablesWindow(Workbench& workbench, QWidget* parent)
    : QWidget(parent),
      workbench_(workbench),
      reader_([this](const std::string& message) {
          workbench_.dialogs.ShowMessage(this, QString::fromStdString(message));
      }),
      listVars_(new VariableList(workbench.configuration.commands, this)),
      filter_(new QLineEdit(this)),
      compilersOwn_(new QCheckBox(tr("The compiler's &own too"), this)),
      status_(new QLabel(this)),
      cmdRefresh_(new QPushButton(kIdleCaption, this)) {
    setObjectName("frmVariables");
    setWindowIcon(ThemedIcon("variables"));
    setWindowTitle(tr("Variables"));
    MakeLayout();
    liveTimer_.setInterval(kLiveInterval);
    connect(&liveTimer_, &QTimer::timeout, this, [this] {
        if (isVisible()) LookUp();
    });
    connect(&reader_, &VariableReader::ReadingStarted, this, &VariablesWindow::BeginReading);
    connect(&reader_, &VariableReader::ReadingFinished, this, &VariablesWindow::EndReading);
    connect(cmdRefresh_, &QPushButton::clicked, this, &VariablesWindow::Refresh);
    connect(compilersOwn_, &QCheckBox::toggled, listVars_, &VariableList::ShowCompilersOwn);
    connect(filter_, &QLineEdit::textChanged, listVars_, &VariableList::ShowOnly);
}

void VariablesWindow::MakeLayout() {
    filter_->setObjectName("txtFilter");
    filter_->setClearButtonEnabled(true);
    filter_->setAccessibleName(tr("Show only variables with this in their names"));
    compilersOwn_->setObjectName("chkCompilersOwn");
    compilersOwn_->setToolTip(
        tr("Show the variables in which the compiler keeps results on the way"));
    auto* label = new QLabel(tr("&Show only:"), this);
    label->setBuddy(filter_);
    cmdRefresh_->setObjectName("cmdRefresh");
    cmdRefresh_->setAutoDefault(false);
    status_->setObjectName("lblStatus");
    status_->setWordWrap(true);
    auto* top = new QHBoxLayout;
    top->addWidget(label);
    top->addWidget(filter_, 1);
    top->addWidget(compilersOwn_);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(status_, 1);
    bottom->addWidget(cmdRefresh_);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(6, 6, 6, 6);
    column->addLayout(top);
    column->addWidget(listVars_, 1);
    column->addLayout(bottom);
    setFocusProxy(listVars_);
}

void VariablesWindow::SetTerminal(TerminalSession* terminal) {
    reader_.SetTerminal(terminal);
}

void VariablesWindow::SetLiveMemory(LiveMemory memory, HeldAt heldAt) {
    liveMemory_ = std::move(memory);
    heldAt_ = std::move(heldAt);
    if (liveMemory_) {
        liveTimer_.start();
        status_->setText(tr("The virtual board's values, as they are"));
    } else {
        liveTimer_.stop();
        status_->clear();
    }
}

void VariablesWindow::SetNote(const QString& note) {
    status_->setText(note);
    status_->setToolTip(note);
}

void VariablesWindow::LoadVariables(const Compilation* compilation) {
    ListVariables(compilation);
    Refresh();
}

void VariablesWindow::LoadVariables(std::vector<DebugVariable> variables) {
    List(std::move(variables));
    Refresh();
}

void VariablesWindow::ListVariables(const Compilation* compilation) {
    List(compilation == nullptr ? std::vector<DebugVariable>{} : VariablesOf(*compilation));
}

void VariablesWindow::List(std::vector<DebugVariable> variables) {
    // A read of the variables before ends here.
    if (reader_.IsReading()) reader_.LoadVariableList(variables_);
    variables_ = std::move(variables);
    listVars_->Load(variables_);
    listVars_->ShowOnly(filter_->text());
    if (!liveMemory_) status_->setText(variables_.empty() ? QString() : tr("Not read yet"));
}

void VariablesWindow::Refresh() {
    if (reader_.IsReading() || !reader_.LoadVariableList(variables_)) return;
    if (liveMemory_) {
        LookUp();
    } else {
        reader_.RefreshVariables();
    }
}

void VariablesWindow::LookUp() {
    for (DebugVariable& variable : variables_) {
        const std::size_t whole = std::min<std::size_t>(variable.size, kMostBytesShown);
        const std::string bytes = liveMemory_(variable.address, std::max(whole, kBytesInReply));
        if (bytes.empty()) continue;
        variable.bytes.assign(bytes.begin(), bytes.end());
        variable.debugValue = FormatBytes(variable.bytes, variable.type);
    }
    const auto heldAt = heldAt_ ? heldAt_() : std::nullopt;
    const bool isSame = heldAt == shownAt_;
    shownAt_ = heldAt;
    listVars_->ShowValues(variables_, kLiveMarkedTimes,
                          !heldAt  ? VariableList::Marks::Fade
                          : isSame ? VariableList::Marks::Keep
                                   : VariableList::Marks::Renew);
}

void VariablesWindow::BeginReading() {
    setCursor(Qt::WaitCursor);
    cmdRefresh_->setText(kReadingCaption);
    cmdRefresh_->setEnabled(false);
    status_->setText(tr("Reading..."));
}

void VariablesWindow::EndReading(bool complete) {
    unsetCursor();
    cmdRefresh_->setText(kIdleCaption);
    cmdRefresh_->setEnabled(true);
    variables_ = reader_.Variables();
    listVars_->ShowValues(variables_);
    const QString time = QLocale().toString(QTime::currentTime(), QLocale::ShortFormat);
    const int changed = listVars_->MarkedCount();
    status_->setText(!complete     ? tr("Not all values were read")
                     : changed > 0 ? tr("Read at %1, %2 changed").arg(time).arg(changed)
                                   : tr("Read at %1").arg(time));
}

void VariablesWindow::closeEvent(QCloseEvent* event) {
    event->accept();
    if (std::exchange(closed_, true)) return;
    reader_.SetTerminal(nullptr);
    liveTimer_.stop();
    liveMemory_ = nullptr;
    variables_.clear();
    listVars_->clear();
    emit FormClosing();
}

}  // namespace zentro
