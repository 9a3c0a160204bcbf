#include "ui/terminal/terminal_view.h"

#include <QMouseEvent>
#include <QScrollBar>
#include <QStyle>
#include <QTextBlock>
#include <QtMath>
#include <algorithm>

#include "ui/support/source_font.h"

namespace zentro {

TerminalView::TerminalView(QWidget* parent) : QPlainTextEdit(parent), shown_(ShowScreen({})) {
    setObjectName("txtTerminal");
    setAccessibleName(tr("Terminal screen"));
    setAccessibleDescription(tr("What the board sends. Keys go to the board."));
    setFont(FixedFont());
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setUndoRedoEnabled(false);
    setTabChangesFocus(true);
    // Never sideways, or a long prompt would take the addresses at the left out of sight.
    setLineWrapMode(QPlainTextEdit::WidgetWidth);
    setWordWrapMode(QTextOption::WrapAnywhere);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setCursorWidth(2);
    connect(this, &QPlainTextEdit::cursorPositionChanged, this, [this] {
        if (!updating_) emit CaretMoved();
    });
}

void TerminalView::ShowText(std::string_view screen, std::size_t cursor) {
    ShownScreen next = ShowScreen(screen);
    const ScreenEdit edit = FindEdit(shown_.text, next.text);
    const int anchor = textCursor().anchor();
    const int position = textCursor().position();
    // Only text that stays can stay selected.
    const bool selected = anchor != position && std::min(anchor, position) >= edit.cutFront &&
                          std::max(anchor, position) <= edit.cutFront + edit.keep;
    updating_ = true;
    if (next.text != shown_.text) Apply(edit, next.text);
    shown_ = std::move(next);
    if (selected) {
        PutCaret(anchor - edit.cutFront, position - edit.cutFront);
    } else {
        PutCaret(ShownPosition(shown_, cursor), ShownPosition(shown_, cursor));
        ensureCursorVisible();
    }
    updating_ = false;
}

/// Where it is there already nothing is scrolled.
void TerminalView::PutCaret(int anchor, int position) {
    QTextCursor caret = textCursor();
    if (caret.anchor() == anchor && caret.position() == position) return;
    caret.setPosition(anchor);
    caret.setPosition(position, QTextCursor::KeepAnchor);
    setTextCursor(caret);
}

void TerminalView::Apply(const ScreenEdit& edit, const QString& text) {
    QTextCursor editor(document());
    editor.beginEditBlock();
    editor.setPosition(edit.cutFront, QTextCursor::KeepAnchor);
    editor.removeSelectedText();
    editor.setPosition(edit.keep);
    editor.movePosition(QTextCursor::End, QTextCursor::KeepAnchor);
    editor.insertText(text.sliced(edit.keep));
    editor.endEditBlock();
}

void TerminalView::SetColours(const QColor& text, const QColor& background) {
    QPalette colours = palette();
    colours.setColor(QPalette::Text, text);
    colours.setColor(QPalette::Base, background);
    // Reversed, so that a selection stands out whatever the colours are.
    colours.setColor(QPalette::Highlight, text);
    colours.setColor(QPalette::HighlightedText, background);
    setPalette(colours);
}

QString TerminalView::SelectedText() const {
    QString text = textCursor().selectedText();
    return text.replace(QChar::ParagraphSeparator, u'\n');
}

std::size_t TerminalView::SelectionStart() const {
    return ScreenPosition(shown_, textCursor().selectionStart());
}

QSize TerminalView::SizeFor(int columns, int lines) const {
    const QFontMetricsF metrics(font());  // fifty rounded widths can lack a whole column
    const int around = 2 * (frameWidth() + static_cast<int>(document()->documentMargin()));
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    return {qCeil(metrics.horizontalAdvance(u'0') * columns) + around + bar + cursorWidth(),
            qCeil(metrics.lineSpacing() * lines) + around};
}

void TerminalView::keyPressEvent(QKeyEvent* event) {
    const std::optional<char> key = KeyToSend(*event);
    if (!key) {
        QPlainTextEdit::keyPressEvent(event);
        return;
    }
    emit KeyPressed(*key);
    event->accept();
}

void TerminalView::mouseDoubleClickEvent(QMouseEvent* event) {
    QPlainTextEdit::mouseDoubleClickEvent(event);
    const int position = cursorForPosition(event->position().toPoint()).position();
    const std::optional<int> address = FindAddress(shown_.text, position);
    if (!address) return;
    QTextCursor word = textCursor();
    word.setPosition(*address);
    word.setPosition(*address + kAddressLength, QTextCursor::KeepAnchor);
    setTextCursor(word);
    emit AddressClicked();
}

}  // namespace zentro
