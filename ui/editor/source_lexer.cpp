#include "ui/editor/source_lexer.h"

#include <algorithm>
#include <array>
#include <utility>

#include "ui/editor/scintilla_text.h"

namespace zentro {

namespace {

using Sci = QsciScintillaBase;

int StyleOf(TextKind kind) {
    return static_cast<int>(kind);
}

}  // namespace

SourceLexer::SourceLexer(const KeywordList& keywords, QObject* parent)
    : QsciLexerCustom(parent), keywords_(keywords) {}

QString SourceLexer::description(int style) const {
    constexpr std::array kNames{"Text", "Keyword", "Comment", "String"};
    const auto index = static_cast<std::size_t>(style);
    return index < kNames.size() ? kNames[index] : QString();
}

void SourceLexer::SetOn(bool on) {
    if (on == isOn_) return;
    isOn_ = on;
    if (editor() != nullptr) Restyle(0, LineCount(*editor()) - 1);
}

void SourceLexer::Restyle(int firstLine, int lastLine) {
    touched_.Add(firstLine, lastLine);
    Send(*editor(), Sci::SCI_STARTSTYLING, LineBegin(*editor(), touched_.first));
}

void SourceLexer::SetColours(const SourceColours& colours) {
    setDefaultColor(colours.text);
    setDefaultPaper(colours.page);
    setPaper(colours.page);
    setColor(colours.text);
    setColor(colours.keyword, StyleOf(TextKind::Keyword));
    setColor(colours.comment, StyleOf(TextKind::Comment));
}

void SourceLexer::SetSourceFont(const QFont& font) {
    setDefaultFont(font);
    setFont(font);
}

void SourceLexer::StyleAll(const std::vector<TextRun>& runs) {
    touched_.Clear();
    SendStyles(0, static_cast<std::size_t>(TextLength(*editor())), runs);
}

void SourceLexer::styleText(int start, int end) {
    QsciScintilla& target = *editor();
    if (touched_.IsEmpty()) touched_.Add(LineOf(target, start), LineOf(target, end));
    const int last = std::min(touched_.last, LineCount(target) - 1);
    const long begin = LineBegin(target, std::min(touched_.first, last));
    const std::string text = TextBetween(target, begin, NextLineBegin(target, last));
    touched_.Clear();

    std::vector<TextRun> runs;
    if (isOn_) runs = FormatSourceText(keywords_, text);
    std::erase_if(runs, [&](const TextRun& run) {
        const long runBegin = begin + static_cast<long>(run.begin);
        return run.kind == TextKind::Keyword && openWord_ > runBegin &&
               openWord_ <= runBegin + static_cast<long>(run.length);
    });
    const std::size_t lastWord = LastWordBegin(text);
    const std::size_t lastLength = text.size() - lastWord;
    const bool isComplete = std::exchange(isEndComplete_, false) ||
                            WasKeyword(begin + static_cast<long>(lastWord), lastLength);
    if (isOn_ && lastLength != 0 && isComplete &&
        !keywords_.Find(std::string_view(text).substr(lastWord)).empty()) {
        runs.push_back({lastWord, lastLength, TextKind::Keyword, {}});
    }
    SendStyles(begin, text.size(), runs);
}

/// A word at the very end of the text is left as it was.
bool SourceLexer::WasKeyword(long begin, std::size_t length) const {
    for (long i = begin; i < begin + static_cast<long>(length); ++i) {
        if (Send(*editor(), Sci::SCI_GETSTYLEAT, i) != StyleOf(TextKind::Keyword)) return false;
    }
    return true;
}

void SourceLexer::SendStyles(long begin, std::size_t length, const std::vector<TextRun>& runs) {
    std::string styles(length, static_cast<char>(TextKind::Other));
    for (const TextRun& run : runs) {
        if (!isOn_ || run.begin >= length) break;
        std::fill_n(styles.begin() + static_cast<std::ptrdiff_t>(run.begin),
                    std::min(run.length, length - run.begin), static_cast<char>(run.kind));
    }
    // All at once: a message for every run would cost more than finding the runs.
    Send(*editor(), Sci::SCI_STARTSTYLING, begin);
    if (!styles.empty()) {
        editor()->SendScintilla(Sci::SCI_SETSTYLINGEX, static_cast<unsigned long>(length),
                                styles.data());
    }
    // What stands below is styled already, unless it was touched.
    Send(*editor(), Sci::SCI_STARTSTYLING, TextLength(*editor()));
}

}  // namespace zentro
