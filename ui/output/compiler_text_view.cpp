#include "ui/output/compiler_text_view.h"

#include <QFontMetricsF>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTextBlock>

namespace zentro {

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
