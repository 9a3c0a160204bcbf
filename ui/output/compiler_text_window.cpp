#include "ui/output/compiler_text_window.h"

#include <QCloseEvent>
#include <QFontMetricsF>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTextBlock>

#include "ui/support/colours.h"
#include "ui/support/source_font.h"

namespace zentro {

namespace {

/// The editor's font, or one of that size in which columns line up.
QFont FixedPitchFont(const SettingsStore& settings) {
    constexpr double kUsualSize = 9.75;
    const double wanted = AsNumber(settings.GetSetting(SettingNumber::EditorFontSize));
    return ColumnFont(
        QString::fromStdString(AsText(settings.GetSetting(SettingNumber::EditorFontName))),
        wanted > 0 ? wanted : kUsualSize);
}

}  // namespace

CompilerTextWindow::CompilerTextWindow(const Workbench& workbench, QList<int> tabColumns,
                                       QWidget* parent)
    : QWidget(parent),
      workbench_(workbench),
      tabColumns_(std::move(tabColumns)),
      view_(new CompilerTextView(this)) {}

void CompilerTextWindow::CopySelectedText() {
    view_->copy();
}

void CompilerTextWindow::SetFormColours() {
    const SettingsStore& settings = workbench_.settings;
    const auto colour = [&](SettingNumber number) {
        return ToColour(AsInteger(settings.GetSetting(number)), palette());
    };
    view_->SetColours(colour(SettingNumber::EditorTextColour),
                      colour(SettingNumber::EditorPageColour));
    view_->SetFontAndTabs(FixedPitchFont(settings), tabColumns_);
}

void CompilerTextWindow::closeEvent(QCloseEvent* event) {
    event->accept();
    emit FormClosing();
}

void CompilerTextWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) SetFormColours();
}

CompilerTextView::CompilerTextView(QWidget* parent) : QPlainTextEdit(parent) {
    setReadOnly(true);
    setUndoRedoEnabled(false);
    setLineWrapMode(NoWrap);
    setTabChangesFocus(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
}

void CompilerTextView::SetColours(const QColor& text, const QColor& page) {
    QPalette colours;  // of the desktop as it is now
    colours.setColor(QPalette::Text, text);
    colours.setColor(QPalette::Base, page);
    for (const auto role : {QPalette::Highlight, QPalette::HighlightedText}) {
        colours.setColor(QPalette::Inactive, role, colours.color(QPalette::Active, role));
    }
    setPalette(colours);
}

void CompilerTextView::SetFontAndTabs(const QFont& font, const QList<int>& tabColumns) {
    setFont(font);
    const qreal character = QFontMetricsF(font).horizontalAdvance('0');
    setTabStopDistance(8 * character);
    QTextOption option = document()->defaultTextOption();
    QList<QTextOption::Tab> tabs;
    for (const int column : tabColumns) {
        tabs += QTextOption::Tab(column * character, QTextOption::LeftTab);
    }
    option.setTabs(tabs);
    document()->setDefaultTextOption(option);
}

void CompilerTextView::SelectLine(int line) {
    const QTextBlock block = document()->findBlockByNumber(line);
    if (!block.isValid()) return;
    QTextCursor cursor(block);
    cursor.movePosition(QTextCursor::EndOfBlock);
    // The caret stands at the start, so that a long line shows its beginning.
    cursor.movePosition(QTextCursor::StartOfBlock, QTextCursor::KeepAnchor);
    setTextCursor(cursor);
    centerCursor();
}

void CompilerTextView::mouseDoubleClickEvent(QMouseEvent* event) {
    QPlainTextEdit::mouseDoubleClickEvent(event);
    if (event->button() != Qt::LeftButton) return;
    emit LineActivated(cursorForPosition(event->position().toPoint()).blockNumber());
}

void CompilerTextView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        emit LineActivated(textCursor().blockNumber());
        return;
    }
    QPlainTextEdit::keyPressEvent(event);
}

}  // namespace zentro
