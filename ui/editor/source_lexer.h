#pragma once

#include <QColor>
#include <QFont>
#include <Qsci/qscilexercustom.h>
#include <vector>

#include "ui/editor/source_text_format.h"
#include "ui/editor/touched_lines.h"

namespace zentro {

/// The colours of source text.
struct SourceColours {
    QColor text;
    QColor page;
    QColor keyword;
    QColor comment;
};

/// Colours source text. While the user types only the touched lines are looked at again; a line
/// that no edit touched keeps its colours.
class SourceLexer : public QsciLexerCustom {
    Q_OBJECT

  public:
    /// The keywords outlive the lexer.
    SourceLexer(const KeywordList& keywords, QObject* parent);

    /// Off: everything is plain text.
    void SetOn(bool on);

    void SetColours(const SourceColours& colours);
    void SetSourceFont(const QFont& font);

    /// Colours a new text, whose runs are known, whole.
    void StyleAll(const std::vector<TextRun>& runs);

    /// An edit in a line put that many lines after it, or took them away.
    void Touch(int line, int linesAdded) { touched_.Edit(line, linesAdded); }

    /// The lines are to be coloured again though no edit touched them.
    void Restyle(int firstLine, int lastLine);

    /// The last word of the text is complete although nothing follows it: it came with a whole
    /// text, or came back, rather than being typed.
    void SetEndComplete() { isEndComplete_ = true; }

    /// The position of a word that is being typed, which is plain until it is complete; -1: none.
    void SetOpenWord(long position) { openWord_ = position; }

    const char* language() const override { return "Source"; }
    bool caseSensitive() const override { return false; }
    QString description(int style) const override;
    void styleText(int start, int end) override;

  private:
    void SendStyles(long begin, std::size_t length, const std::vector<TextRun>& runs);
    bool WasKeyword(long begin, std::size_t length) const;

    const KeywordList& keywords_;
    TouchedLines touched_;
    long openWord_ = -1;
    bool isEndComplete_ = false;  ///< until the text is coloured next
    bool isOn_ = true;
};

}  // namespace zentro
