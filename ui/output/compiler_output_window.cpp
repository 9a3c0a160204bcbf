#include "ui/output/compiler_output_window.h"

#include <QAccessible>
#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QTextBlock>
#include <algorithm>
#include <chrono>
#include <utility>

#include "desktop/fixes.h"
#include "ui/support/colours.h"

namespace zentro {

namespace {

constexpr std::chrono::milliseconds kAnimationStep{50};
/// The log is shown in pieces of this length, which costs less than showing it line by line.
constexpr std::chrono::milliseconds kShowDelay{30};

/// Behind the line's number; two stops on the way to the message; the message.
const QList<int> kTabColumns{8, 32, 45};

/// The colours on white paper.
QColor InkOf(LogColour colour) {
    switch (colour) {
        case LogColour::Black: return {0, 0, 0};
        case LogColour::Grey: return {109, 109, 109};
        case LogColour::Green: return {0, 127, 0};
        case LogColour::Blue: return {0, 0, 255};
        case LogColour::Red: return {255, 0, 0};
    }
    return {0, 0, 0};
}

/// On another page they keep their meaning in a shade that can be read there.
QColor ColourOf(LogColour colour, const QPalette& palette) {
    constexpr int kNearlyWhite = 240;
    const QColor page = palette.color(QPalette::Base);
    if (page.lightness() >= kNearlyWhite) return InkOf(colour);
    if (colour == LogColour::Black && IsDark(palette)) return Qt::white;
    return ReadableOn(InkOf(colour), page);
}

}  // namespace

CompilerOutputWindow::CompilerOutputWindow(const Workbench& workbench, QWidget* parent)
    : CompilerTextWindow(workbench, kTabColumns, parent),
      summary_(new QLabel(this)),
      fix_(new QPushButton(tr("Fix This"), this)),
      progress_(new QProgressBar(this)) {
    setObjectName("frmCompilerOutput");
    setWindowTitle("Compiler Output");
    BuildLayout();
    animation_.setInterval(kAnimationStep);
    connect(&animation_, &QTimer::timeout, this, &CompilerOutputWindow::Animate);
    showTimer_.setSingleShot(true);
    showTimer_.setInterval(kShowDelay);
    connect(&showTimer_, &QTimer::timeout, this, &CompilerOutputWindow::ShowPending);
    connect(&View(), &CompilerTextView::LineActivated, this, &CompilerOutputWindow::ShowLineOf);
    connect(&View(), &QPlainTextEdit::cursorPositionChanged, this, &CompilerOutputWindow::OfferFix);
    connect(fix_, &QPushButton::clicked, this, &CompilerOutputWindow::FixMessage);
    OfferFix();
    SetFormColours();
}

void CompilerOutputWindow::BuildLayout() {
    setFocusProxy(&View());
    View().setLineWrapMode(QPlainTextEdit::WidgetWidth);  // messages are sentences to be read whole
    View().setObjectName("txtOutput");
    View().setAccessibleName("Compiler messages");
    View().setAccessibleDescription(
        "Enter shows the source line of a message, F4 that of the next message");
    summary_->setObjectName("lblSummary");
    progress_->setObjectName("prgCompile");
    progress_->setAccessibleName("Compiling");
    progress_->setTextVisible(false);
    progress_->setFixedHeight(summary_->fontMetrics().height());
    progress_->setMaximumWidth(160);
    progress_->setMinimumWidth(24);
    progress_->hide();
    fix_->setObjectName("cmdFix");
    fix_->setAccessibleDescription(
        tr("Writes into the source what the message at the caret says (Alt+Enter)"));
    fix_->setToolTip(fix_->accessibleDescription());
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(&View());
    auto* const footer = new QHBoxLayout;
    footer->setContentsMargins(6, 3, 6, 3);
    footer->addWidget(summary_, 1);
    footer->addWidget(progress_);
    footer->addWidget(fix_);
    layout->addLayout(footer);
}

void CompilerOutputWindow::InitFile(const QString& path, const QString& fileName) {
    if (fileName.isEmpty()) return;
    path_ = path;
    fileName_ = fileName;
    setWindowTitle(fileName + " (Compiler Output)");
}

void CompilerOutputWindow::Write(std::string_view text, LogColour colour,
                                 const PostedMessage* message) {
    log_.Write(text, colour, message);
    if (!showTimer_.isActive()) showTimer_.start();
}

void CompilerOutputWindow::Clear() {
    log_ = CompileLog(fileName_.toStdString());
    View().clear();
    OfferFix();
    hasBegun_ = true;
    summary_->setText("Compiling...");
    progress_->setValue(0);
    progress_->show();
    animation_.start();
}

void CompilerOutputWindow::Beep() {
    QApplication::beep();
}

void CompilerOutputWindow::Animate() {
    constexpr int kStep = 3;
    const int value = progress_->value();
    const bool isFull = value >= progress_->maximum();
    progress_->setValue(isFull ? 0 : std::min(value + kStep, progress_->maximum()));
}

void CompilerOutputWindow::FinishCompile() {
    ShowPending();
    animation_.stop();
    progress_->hide();
    ShowSummary();
    unvisited_ = log_.FirstErrorLine();
    if (unvisited_) View().SelectLine(*unvisited_);
    OfferFix();
    Announce();
}

void CompilerOutputWindow::ShowSummary() {
    const QString counts = hasBegun_ ? CountsText(log_.ErrorCount(), log_.WarningCount())
                                     : QString("Nothing was compiled");
    summary_->setText(isTextChanged_ ? tr("%1. The text has been changed since.").arg(counts)
                                     : counts);
}

void CompilerOutputWindow::ShowTextChanged(bool changed) {
    if (std::exchange(isTextChanged_, changed) != changed) ShowSummary();
}

/// Tells who cannot see the window what came of the compile.
void CompilerOutputWindow::Announce() {
    QAccessibleEvent renamed(summary_, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&renamed);
    QAccessibleEvent alert(summary_, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

QTextCharFormat CompilerOutputWindow::FormatOf(LogColour colour) const {
    QTextCharFormat format;
    format.setForeground(ColourOf(colour, View().palette()));
    return format;
}

void CompilerOutputWindow::ShowPending() {
    showTimer_.stop();
    const std::vector<LogRun> runs = log_.TakePending();
    if (runs.empty()) return;
    QTextCursor cursor(View().document());
    cursor.movePosition(QTextCursor::End);
    cursor.beginEditBlock();
    for (const LogRun& run : runs)
        cursor.insertText(run.text, FormatOf(run.colour));
    cursor.endEditBlock();
    View().setTextCursor(cursor);
    View().ensureCursorVisible();
}

void CompilerOutputWindow::SetFormColours() {
    CompilerTextWindow::SetFormColours();
    ShowPending();
    Recolour();
}

void CompilerOutputWindow::Recolour() {
    QTextCursor cursor(View().document());
    cursor.beginEditBlock();
    QTextBlock block = View().document()->begin();
    for (const LogColour colour : log_.LineColours()) {
        cursor.setPosition(block.position());
        cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
        cursor.setCharFormat(FormatOf(colour));
        block = block.next();
    }
    cursor.endEditBlock();
}

void CompilerOutputWindow::ShowLineOf(int logLine) {
    unvisited_.reset();
    const PostedMessage* message = log_.MessageInLine(logLine);
    if (message == nullptr) return;
    LineXref place = LineThatMatters(*message);
    // The end of the program belongs to no file that was named; the main file ends there.
    if (place.fileName.empty()) {
        place.fileName = fileName_.toStdString();
        place.pathName = path_.toStdString();
    }
    emit ShowLineWithError(place);
}

const PostedMessage* CompilerOutputWindow::MessageAtCursor() const {
    return log_.MessageInLine(View().textCursor().blockNumber());
}

/// The button is there only for messages that know the fix.
void CompilerOutputWindow::OfferFix() {
    const PostedMessage* message = MessageAtCursor();
    fix_->setVisible(message != nullptr && message->hint.fix);
}

void CompilerOutputWindow::FixMessage() {
    const PostedMessage* message = MessageAtCursor();
    if (message == nullptr || !message->hint.fix) return;
    const Fix fix = *message->hint.fix;  // the log may go
    emit FixWanted(fix);
}

/// A message that is about no source line is told by its code, which stands in the log as well.
HelpTopic CompilerOutputWindow::TopicAtCursor() const {
    static const QRegularExpression kCode("\\b(E\\d+): ");
    const QTextBlock line = View().textCursor().block();
    const PostedMessage* message = MessageAtCursor();
    const std::string code = message != nullptr
                                 ? MessageCodeText(message->code)
                                 : kCode.match(line.text()).captured(1).toStdString();
    if (code.empty()) return {};
    if (message == nullptr || message->hint.text.empty()) return {code, {code}};
    const Hint& hint = message->hint;
    const QString text = QString::fromStdString(hint.sourceLine);
    return {code,
            {code},
            OwnCase{LineThatMatters(*message).sourceLineNo, text, QString::fromStdString(hint.text),
                    hint.fix ? FixedLine(text, *hint.fix) : QString()}};
}

void CompilerOutputWindow::SelectMessage(const std::function<bool(const LineXref&)>& isWanted) {
    const auto isAbout = [&](int logLine) {
        const PostedMessage* message = log_.MessageInLine(logLine);
        return message != nullptr && isWanted(LineThatMatters(*message));
    };
    const int present = View().textCursor().blockNumber();
    if (isAbout(present)) return;
    const auto last = log_.PreviousMessage(present);
    for (auto line = log_.NextMessage(present); line; line = log_.NextMessage(*line)) {
        if (isAbout(*line)) {
            unvisited_.reset();
            return View().SelectLine(*line);
        }
        if (line == last) return;
    }
}

void CompilerOutputWindow::ShowNextMessage() {
    const int line = View().textCursor().blockNumber();
    const bool isUnvisited = unvisited_ == line && log_.MessageInLine(line) != nullptr;
    GoTo(isUnvisited ? line : log_.NextMessage(line));
}

void CompilerOutputWindow::ShowPreviousMessage() {
    GoTo(log_.PreviousMessage(View().textCursor().blockNumber()));
}

/// Not a shortcut, so that the frame may have the same keys for the same purpose.
void CompilerOutputWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_F4) return CompilerTextWindow::keyPressEvent(event);
    if (event->modifiers() == Qt::NoModifier) return ShowNextMessage();
    if (event->modifiers() == Qt::ShiftModifier) return ShowPreviousMessage();
    CompilerTextWindow::keyPressEvent(event);
}

void CompilerOutputWindow::GoTo(std::optional<int> logLine) {
    if (!logLine) return;
    View().SelectLine(*logLine);
    ShowLineOf(*logLine);
}

}  // namespace zentro
