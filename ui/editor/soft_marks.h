#pragma once

#include <QColor>
#include <Qsci/qsciscintilla.h>
#include <vector>

namespace zentro {

/// A piece of the text, in bytes from its beginning.
struct TextRange {
    long begin = 0;
    long end = 0;

    bool operator==(const TextRange&) const = default;
};

/// What is marked softly behind the text.
enum class SoftMark : int { Use = 12, Match = 13 };

/// Soft marks behind pieces of an editor's text. They move with their text.
class SoftMarks {
  public:
    /// The editor outlives the object.
    explicit SoftMarks(QsciScintilla& editor) : editor_(editor) {}

    /// Draws the marks for the colours of the text and its page.
    void Redraw(const QColor& text, const QColor& page);

    /// Marks these pieces in place of those marked before.
    void Show(SoftMark mark, const std::vector<TextRange>& ranges);
    void Clear(SoftMark mark) { Show(mark, {}); }
    std::vector<TextRange> Shown(SoftMark mark) const;

  private:
    QsciScintilla& editor_;
};

}  // namespace zentro
