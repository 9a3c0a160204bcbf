#include "ui/editor/source_editor.h"

#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QToolTip>
#include <QUrl>
#include <Qsci/qscicommand.h>
#include <Qsci/qscicommandset.h>
#include <algorithm>
#include <utility>

#include "ui/editor/scintilla_text.h"
#include "ui/editor/statement_help.h"
#include "ui/support/colours.h"

namespace zentro {

namespace {

constexpr int kNumberMargin = 1;
constexpr int kFoldMargin = 3;
constexpr int kSymbolMarginWidth = 18;
constexpr int kCaretLineAlpha = 15;

using Sci = QsciScintillaBase;

QStringList DroppedFiles(const QMimeData* data) {
    QStringList files;
    for (const QUrl& url : data->urls()) {
        if (url.isLocalFile()) files += url.toLocalFile();
    }
    return files;
}

const QColor kKeywordColour(0, 0, 255);
const QColor kCommentColour(0, 127, 0);
const QColor kBraceColour(200, 0, 0);

}  // namespace

SourceEditor::SourceEditor(const InstructionConfiguration& configuration, QWidget* parent)
    : QsciScintilla(parent),
      commands_(configuration.commands),
      keywords_(configuration.commands.GetCommandText(Token::KeywordList)),
      lexer_(new SourceLexer(keywords_, this)),
      respeller_(*this, *lexer_, keywords_),
      folds_(*this, configuration.commands),
      marks_(*this),
      soft_(*this),
      typing_(*this, configuration) {
    setObjectName("rtfSource");
    setAccessibleName("Source text");
    setUtf8(true);
    setEolMode(QsciScintilla::EolUnix);
    // Before the lexer is asked for styles it must know what was edited, so this comes first.
    connect(this, &QsciScintillaBase::SCN_STYLENEEDED, this, &SourceEditor::TellEdit);
    setLexer(lexer_);
    SetUpMargins();
    SetUpTyping();
    ConnectSignals();
    QAccessible::installActivationObserver(this);
    TellEditsToListeners(QAccessible::isActive());
}

SourceEditor::~SourceEditor() {
    QAccessible::removeActivationObserver(this);
}

void SourceEditor::accessibilityActiveChanged(bool active) {
    TellEditsToListeners(active);
}

/// For each edit the component tells screen readers where it is in characters, and counts them from
/// the start of the text, although nobody may be there to listen. In a long text that takes most of
/// a key press, so edits are told only when somebody listens.
void SourceEditor::TellEditsToListeners(bool active) {
    constexpr long kNeeded = SC_MOD_BEFOREINSERT | SC_MOD_BEFOREDELETE | SC_MOD_CHANGEFOLD;
    Send(*this, Sci::SCI_SETMODEVENTMASK, active ? long{SC_MODEVENTMASKALL} : kNeeded);
}

/// The same for the place of the caret, which is counted as long as there is an interface to tell.
void SourceEditor::SkipAccessibility() {
    if (QAccessible::isActive()) return;
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(this);
    if (interface != nullptr)
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(interface));
}

void SourceEditor::SetUpMargins() {
    setMarginType(kNumberMargin, QsciScintilla::NumberMargin);
    setMarginMarkerMask(kNumberMargin, 0);  // of itself it would show every mark
    for (const int margin :
         {EditorMarks::kBreakpointMargin, EditorMarks::kMargin, EditorMarks::kLampMargin}) {
        setMarginType(margin, QsciScintilla::SymbolMargin);
        setMarginWidth(margin, kSymbolMarginWidth);
        setMarginSensitivity(margin, true);
    }
    setFolding(QsciScintilla::BoxedTreeFoldStyle, kFoldMargin);
    Send(*this, Sci::SCI_SETMARGINLEFT, 0, 4);
}

void SourceEditor::SetUpTyping() {
    setIndentationsUseTabs(false);
    setIndentationWidth(4);
    setTabWidth(4);
    setTabIndents(true);
    setBackspaceUnindents(true);
    setBraceMatching(QsciScintilla::SloppyBraceMatch);
    setCaretLineVisible(true);
    setScrollWidth(1);
    setScrollWidthTracking(true);
    setAutoCompletionSource(QsciScintilla::AcsNone);
    setCallTipsStyle(QsciScintilla::CallTipsNone);
    // Keys of the menus that would mean something else to the component.
    for (const QKeyCombination key : {Qt::CTRL | Qt::Key_D, Qt::CTRL | Qt::Key_Slash}) {
        if (QsciCommand* command = standardCommands()->boundTo(key.toCombined()))
            command->setKey(0);
    }
}

/// On both sides of the numbers; but a mark of a message leads to the message.
bool SourceEditor::IsForBreakpoints(int margin, int line) const {
    return margin == EditorMarks::kBreakpointMargin ||
           (margin == EditorMarks::kMargin && !marks_.HasMessage(line));
}

void SourceEditor::ConnectSignals() {
    settle_.setSingleShot(true);
    connect(&settle_, &QTimer::timeout, this, &SourceEditor::Settle);
    connect(this, &QsciScintillaBase::SCN_MODIFIED, this,
            [this](int position, int type, const char*, int length) {
                BeforeEdit(position, type, length);
            });
    connect(this, &QsciScintillaBase::SCN_CHARADDED, this, &SourceEditor::OnCharacterAdded);
    connect(this, &QsciScintillaBase::SCN_UPDATEUI, this, [this] { settle_.start(0); });
    connect(this, &QsciScintilla::marginClicked, this, [this](int margin, int line) {
        if (IsForBreakpoints(margin, line)) return emit BreakpointClicked(line + 1);
        if (margin == EditorMarks::kMargin) setCursorPosition(line, indentation(line));
        if (margin == EditorMarks::kLampMargin && marks_.HasLamp(line)) emit LampClicked(line + 1);
    });
    connect(this, &QsciScintilla::marginRightClicked, this, [this](int margin, int line) {
        if (IsForBreakpoints(margin, line)) emit ConditionClicked(line + 1);
    });
    connect(this, &QsciScintillaBase::SCN_ZOOM, this, [this] {
        digits_ = 0;
        FitNumberMargin();
    });
}

/// Spells the keywords of a text that is not in the editor yet, and tells what it is made of.
std::vector<TextRun> SourceEditor::Prepare(std::string& text, bool isLastLineEnded) const {
    if (!isColouring_) return {};
    if (isLastLineEnded) text += '\n';
    std::vector<TextRun> runs = FormatSourceText(keywords_, text);
    RespellKeywords(text, runs);
    if (isLastLineEnded) text.pop_back();
    return runs;
}

std::string SourceEditor::Spelled(std::string word) const {
    Prepare(word, true);
    return word;
}

std::string SourceEditor::TextBytes() {
    return TextBetween(*this, 0, TextLength(*this));
}

void SourceEditor::SetColouring(bool on) {
    isColouring_ = on;
    lexer_->SetOn(on);
    respeller_.SetOn(on);
}

void SourceEditor::SetSourceFont(const QFont& font) {
    lexer_->SetSourceFont(font);
    setMarginsFont(font);
    digits_ = 0;
    FitNumberMargin();
}

void SourceEditor::FitNumberMargin() {
    const auto digits = std::max(3, static_cast<int>(QString::number(lines()).size()));
    if (digits == digits_) return;
    digits_ = digits;
    setMarginWidth(kNumberMargin, QString(digits + 1, '8'));
}

void SourceEditor::keyPressEvent(QKeyEvent* event) {
    QToolTip::hideText();  // it would stand over what is typed
    if (typing_.HandleKey(*event)) return;
    // The new line and its indentation are undone together, but not what is spelt otherwise then.
    endsLine_ = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (endsLine_) beginUndoAction();
    QsciScintilla::keyPressEvent(event);
    EndLineEnd();
}

void SourceEditor::EndLineEnd() {
    if (std::exchange(endsLine_, false)) endUndoAction();
}

bool SourceEditor::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QsciScintilla::viewportEvent(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    // Plain text, whatever it holds, in lines that fit the screen.
    const QString text = HoverText(help->pos());
    QToolTip::showText(help->globalPos(),
                       text.isEmpty()
                           ? QString()
                           : "<p style='white-space:pre-wrap'>" + text.toHtmlEscaped() + "</p>",
                       viewport());
    return true;
}

QString SourceEditor::HoverText(const QPoint& point) {
    const long nearest = Send(*this, Sci::SCI_POSITIONFROMPOINT, point.x(), point.y());
    const int line = LineOf(*this, nearest);
    const long top = Send(*this, Sci::SCI_POINTYFROMPOSITION, 0, nearest);
    if (point.y() > top + Send(*this, Sci::SCI_TEXTHEIGHT, line)) return {};  // below the text
    QStringList texts;
    const std::string word = WordAt(point);
    if (valueOf_ && !word.empty()) texts += valueOf_(line + 1, QString::fromStdString(word));
    texts += marks_.TextAt(line);
    const ProgramName* name = FindName(typing_.ProgramNames(), word);
    if (name != nullptr && texts.last().isEmpty())
        texts += QString::fromStdString(name->declaration);
    texts.removeAll(QString());
    return texts.join('\n');
}

/// The word under the mouse; empty: there is none.
std::string SourceEditor::WordAt(const QPoint& point) {
    const long position = Send(*this, Sci::SCI_POSITIONFROMPOINTCLOSE, point.x(), point.y());
    if (position < 0) return {};
    return TextBetween(*this, Send(*this, Sci::SCI_WORDSTARTPOSITION, position, 1),
                       Send(*this, Sci::SCI_WORDENDPOSITION, position, 1));
}

int SourceEditor::WidthOfMargins() const {
    int width = 0;
    for (int margin = 0; margin < margins(); ++margin)
        width += marginWidth(margin);
    return width;
}

/// The menu is about the text; in the margins the same press is about the line.
void SourceEditor::contextMenuEvent(QContextMenuEvent* event) {
    const bool isInMargins =
        event->reason() == QContextMenuEvent::Mouse && event->x() < WidthOfMargins();
    if (!isInMargins) QsciScintilla::contextMenuEvent(event);
}

void SourceEditor::dragEnterEvent(QDragEnterEvent* event) {
    if (DroppedFiles(event->mimeData()).isEmpty()) return QsciScintilla::dragEnterEvent(event);
    event->acceptProposedAction();
}

void SourceEditor::dragMoveEvent(QDragMoveEvent* event) {
    if (DroppedFiles(event->mimeData()).isEmpty()) return QsciScintilla::dragMoveEvent(event);
    event->acceptProposedAction();
}

void SourceEditor::dropEvent(QDropEvent* event) {
    const QStringList files = DroppedFiles(event->mimeData());
    if (files.isEmpty()) return QsciScintilla::dropEvent(event);
    event->acceptProposedAction();
    emit FilesDropped(files);
}

void SourceEditor::SelectRange(long begin, long end) {
    ensureLineVisible(LineOf(*this, begin));
    Send(*this, Sci::SCI_SETSEL, begin, end);
    Send(*this, Sci::SCI_SCROLLCARET);
    // The component tells of a new place only when it draws it.
    settle_.start(0);
}

HelpTopic SourceEditor::TopicAtCaret() {
    const long caret = CaretPosition(*this);
    const int line = LineOf(*this, caret);
    return HelpTopicAt(commands_, typing_.ProgramNames(), LineText(*this, line),
                       static_cast<std::size_t>(caret - LineBegin(*this, line)));
}

int SourceEditor::CaretLine() {
    return LineOf(*this, CaretPosition(*this)) + 1;
}

int SourceEditor::CaretColumn() {
    const long caret = CaretPosition(*this);
    return static_cast<int>(
        Send(*this, Sci::SCI_COUNTCHARACTERS, LineBegin(*this, LineOf(*this, caret)), caret));
}

bool SourceEditor::IsCaretInWord() {
    const long caret = CaretPosition(*this);
    const auto isInWord = [&](long place) {
        return IsNameCharacter(static_cast<char>(Send(*this, Sci::SCI_GETCHARAT, place)));
    };
    return isInWord(caret) || (caret > 0 && isInWord(caret - 1));
}

void SourceEditor::SetColours(const QColor& text, const QColor& page) {
    const QColor readable = ReadableOn(text, page);
    lexer_->SetColours(
        {readable, page, ReadableOn(kKeywordColour, page), ReadableOn(kCommentColour, page)});
    SetChromeColours(readable, page);
    marks_.Redraw(page);
    soft_.Redraw(readable, page);
}

/// Everything around the text is a shade between the text's colour and the page's.
void SourceEditor::SetChromeColours(const QColor& text, const QColor& page) {
    const QColor margin = Mix(text, page, 5);
    setMarginsBackgroundColor(margin);
    setMarginsForegroundColor(ReadableOn(Mix(text, page, 60), margin));
    setFoldMarginColors(margin, margin);
    const QColor fold = Mix(text, page, 60);
    for (int marker = SC_MARKNUM_FOLDEREND; marker <= int{SC_MARKNUM_FOLDEROPEN}; ++marker) {
        // The editor's own functions leave markers alone that it has not given out itself.
        SendScintilla(SCI_MARKERSETFORE, static_cast<unsigned long>(marker), margin);
        SendScintilla(SCI_MARKERSETBACK, static_cast<unsigned long>(marker), fold);
    }
    setCaretForegroundColor(text);
    // Seen through, so that a line that is lit stays so under the caret.
    setCaretLineBackgroundColor(QColor(text.red(), text.green(), text.blue(), kCaretLineAlpha));
    setSelectionBackgroundColor(palette().color(QPalette::Active, QPalette::Highlight));
    setSelectionForegroundColor(palette().color(QPalette::Active, QPalette::HighlightedText));
    setMatchedBraceBackgroundColor(Mix(text, page, 20));
    setMatchedBraceForegroundColor(text);
    setUnmatchedBraceBackgroundColor(page);
    setUnmatchedBraceForegroundColor(ReadableOn(kBraceColour, page));
    const QColor tip = palette().color(QPalette::ToolTipBase);
    setCallTipsBackgroundColor(tip);
    setCallTipsForegroundColor(ReadableOn(palette().color(QPalette::ToolTipText), tip));
    setCallTipsHighlightColor(ReadableOn(kKeywordColour, tip));
}

}  // namespace zentro
