#include "ui/editor/typing_help.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>

#include "config/text.h"
#include "desktop/block_words.h"
#include "ui/editor/completion.h"
#include "ui/editor/scintilla_text.h"
#include "ui/editor/statement_help.h"

namespace zentro {

namespace {

using Sci = QsciScintillaBase;

constexpr long kStep = 4;               // columns of one level
constexpr std::size_t kLeastTyped = 2;  // letters before completions are offered unasked

}  // namespace

TypingHelp::TypingHelp(QsciScintilla& editor, const InstructionConfiguration& configuration)
    : editor_(editor), configuration_(configuration) {
    Send(editor, Sci::SCI_AUTOCSETSEPARATOR, '\n');
    Send(editor, Sci::SCI_AUTOCSETIGNORECASE, 1);
    Send(editor, Sci::SCI_AUTOCSETORDER, Sci::SC_ORDER_PERFORMSORT);
    Send(editor, Sci::SCI_AUTOCSETCHOOSESINGLE, 0);
    Send(editor, Sci::SCI_AUTOCSETMAXHEIGHT, 8);
    // Above the line: what is written next stands below it.
    Send(editor, Sci::SCI_CALLTIPSETPOSITION, 1);
}

bool TypingHelp::IsOffering() const {
    return Send(editor_, Sci::SCI_AUTOCACTIVE) != 0;
}

bool TypingHelp::HandleKey(const QKeyEvent& event) {
    if (event.key() == Qt::Key_Space && event.modifiers() == Qt::ControlModifier) {
        ShowCompletions();
        return true;
    }
    if (SwallowBlank(event)) return true;
    if (!IsOffering()) return false;
    switch (event.key()) {
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown: hasChosen_ = true; break;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            // A line end that ends a word is a line end, unless somebody has chosen or there is
            // only one word that it can become.
            if (!hasChosen_ && !IsOnlyOneOffered()) Send(editor_, Sci::SCI_AUTOCCANCEL);
            break;
        default: break;
    }
    return false;
}

/// Who copies a program from paper types the blanks at the head of its lines too. As far as the
/// editor has put them there already, they are not put there again.
bool TypingHelp::SwallowBlank(const QKeyEvent& event) {
    if (indentedLine_ < 0) return false;
    const bool isPlain = (event.modifiers() & ~Qt::ShiftModifier) == Qt::NoModifier;
    const bool isBlank = isPlain && event.key() == Qt::Key_Space;
    const bool isTab = event.modifiers() == Qt::NoModifier && event.key() == Qt::Key_Tab;
    if (event.key() == Qt::Key_Shift) return false;
    const long indented = Send(editor_, Sci::SCI_GETLINEINDENTATION, indentedLine_);
    if ((!isBlank && !isTab) || !IsAtNewIndentation() || swallowed_ >= indented) {
        indentedLine_ = -1;
        return false;
    }
    swallowed_ = isTab ? (swallowed_ / kStep + 1) * kStep : swallowed_ + 1;
    return true;
}

bool TypingHelp::IsAtNewIndentation() const {
    return Send(editor_, Sci::SCI_GETSELECTIONEMPTY) != 0 &&
           CaretPosition(editor_) == Send(editor_, Sci::SCI_GETLINEINDENTPOSITION, indentedLine_);
}

void TypingHelp::CharacterAdded(int character) {
    const int line = LineOf(editor_, CaretPosition(editor_));
    if (character == '\n') {
        IndentNewLine(line);
        return CaretMoved();
    }
    IndentBlockWord(line);
    const char typed = character < 128 ? static_cast<char>(character) : ' ';
    if (IsOffering()) return CloseWhenComplete();
    if (IsNameCharacter(typed) && Offer(kLeastTyped)) return;
    UpdateCallTip();
}

void TypingHelp::ShowCompletions() {
    if (Offer(0)) hasChosen_ = true;
}

void TypingHelp::CaretMoved() {
    if (indentedLine_ >= 0 && !IsAtNewIndentation()) indentedLine_ = -1;
    if (tipLine_ == -1 || LineOf(editor_, CaretPosition(editor_)) == tipLine_) return;
    Send(editor_, Sci::SCI_CALLTIPCANCEL);
    tipLine_ = -1;
}

std::string TypingHelp::BeforeCaret() const {
    const long caret = CaretPosition(editor_);
    return TextBetween(editor_, LineBegin(editor_, LineOf(editor_, caret)), caret);
}

/// The component asks the screen below a position for its size, and fails when there is none.
bool TypingHelp::IsOnScreen(long position) const {
    const QPoint point(static_cast<int>(Send(editor_, Sci::SCI_POINTXFROMPOSITION, 0, position)),
                       static_cast<int>(Send(editor_, Sci::SCI_POINTYFROMPOSITION, 0, position)));
    return QGuiApplication::screenAt(editor_.mapToGlobal(point)) != nullptr &&
           QGuiApplication::screenAt(editor_.viewport()->mapToGlobal(point)) != nullptr;
}

/// Whether nothing is offered but what is typed already.
bool TypingHelp::IsComplete(const Completion& completion, std::string_view before) {
    return completion.items.size() == 1 &&
           EqualsIgnoreCase(completion.items.front(),
                            before.substr(before.size() - completion.typed));
}

bool TypingHelp::IsOnlyOneOffered() const {
    return CompletionsOf(configuration_.commands, names_, BeforeCaret()).items.size() == 1;
}

/// A list in which there is nothing left to choose would keep the arrow keys from the text.
void TypingHelp::CloseWhenComplete() {
    const std::string before = BeforeCaret();
    if (IsComplete(CompletionsOf(configuration_.commands, names_, before), before))
        Send(editor_, Sci::SCI_AUTOCCANCEL);
}

/// Shows the completions, if there are any that would change what is typed.
bool TypingHelp::Offer(std::size_t leastTyped) {
    const std::string before = BeforeCaret();
    const Completion completion = CompletionsOf(configuration_.commands, names_, before);
    if (completion.typed < leastTyped || completion.items.empty()) return false;
    if (IsComplete(completion, before)) return false;
    std::string list;
    for (const std::string& item : completion.items) {
        if (!list.empty()) list += '\n';
        list += item;
    }
    if (!IsOnScreen(CaretPosition(editor_) - static_cast<long>(completion.typed))) return false;
    hasChosen_ = false;
    editor_.SendScintilla(Sci::SCI_AUTOCSHOW, static_cast<unsigned long>(completion.typed),
                          list.c_str());
    return true;
}

void TypingHelp::UpdateCallTip() {
    const std::string before = BeforeCaret();
    const CallTip tip = StatementHelp(configuration_, names_, before, before.size());
    const long caret = CaretPosition(editor_);
    if (tip.text.empty()) {
        if (tipLine_ != -1) Send(editor_, Sci::SCI_CALLTIPCANCEL);
        tipLine_ = -1;
        return;
    }
    tipLine_ = LineOf(editor_, caret);
    editor_.SendScintilla(
        Sci::SCI_CALLTIPSHOW,
        static_cast<unsigned long>(Send(editor_, Sci::SCI_GETLINEINDENTPOSITION, tipLine_)),
        tip.text.c_str());
    Send(editor_, Sci::SCI_CALLTIPSETHLT, static_cast<long>(tip.markBegin),
         static_cast<long>(tip.markEnd));
}

/// Indents the caret's line and keeps the caret at its place in the text.
void TypingHelp::SetIndentation(int line, long columns) {
    const long old = Send(editor_, Sci::SCI_GETLINEINDENTATION, line);
    if (old == columns) return;
    const long caret = CaretPosition(editor_);
    const long fromText = caret - Send(editor_, Sci::SCI_GETLINEINDENTPOSITION, line);
    Send(editor_, Sci::SCI_SETLINEINDENTATION, line, columns);
    const long indent = Send(editor_, Sci::SCI_GETLINEINDENTPOSITION, line);
    Send(editor_, Sci::SCI_SETEMPTYSELECTION, indent + std::max(fromText, 0L));
}

void TypingHelp::IndentNewLine(int line) {
    if (line == 0) return;
    const std::string above = LineText(editor_, line - 1);
    const Statement* word = FindBlockWord(configuration_.commands, above);
    long columns = Send(editor_, Sci::SCI_GETLINEINDENTATION, line - 1);
    if (word != nullptr && word->edge.role != BlockRole::Ends) columns += kStep;
    SetIndentation(line, columns);
    IndentBlockWord(line);
    indentedLine_ = line;
    swallowed_ = 0;
}

/// Puts a line that ends a block, or goes on with it, below the line that opened the block.
void TypingHelp::IndentBlockWord(int line) {
    const std::string text = LineText(editor_, line);
    const Statement* word = FindBlockWord(configuration_.commands, text);
    if (word == nullptr || word->edge.role == BlockRole::Opens ||
        !IsBlockWordAlone(configuration_.commands, *word, text)) {
        return;
    }
    const int opener = FindOpener(line, !IsInner(word->edge.block));
    if (opener < 0) return;
    SetIndentation(
        line, Send(editor_, Sci::SCI_GETLINEINDENTATION, opener) + StepsOf(word->edge) * kStep);
}

int TypingHelp::FindOpener(int line, bool isOutermost) const {
    int closed = 0;
    for (int i = line - 1; i >= 0; --i) {
        const Statement* word = FindBlockWord(configuration_.commands, LineText(editor_, i));
        if (word == nullptr || word->edge.role == BlockRole::Continues) continue;
        if (!IsInner(word->edge.block))
            return isOutermost && word->edge.role == BlockRole::Opens ? i : -1;
        if (isOutermost) continue;
        if (word->edge.role == BlockRole::Ends) {
            ++closed;
        } else if (closed-- == 0) {
            return i;
        }
    }
    return -1;
}

}  // namespace zentro
