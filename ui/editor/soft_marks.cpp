#include "ui/editor/soft_marks.h"

#include "ui/editor/scintilla_text.h"
#include "ui/support/colours.h"

namespace zentro {

namespace {

using Sci = QsciScintillaBase;

const QColor kMatchColour(230, 160, 0);

}  // namespace

void SoftMarks::Redraw(const QColor& text, const QColor& page) {
    const auto draw = [&](SoftMark mark, const QColor& colour, int fill, int outline) {
        const int number = static_cast<int>(mark);
        editor_.indicatorDefine(QsciScintilla::StraightBoxIndicator, number);
        editor_.setIndicatorForegroundColor(colour, number);
        editor_.setIndicatorDrawUnder(true, number);
        Send(editor_, Sci::SCI_INDICSETALPHA, number, fill);
        Send(editor_, Sci::SCI_INDICSETOUTLINEALPHA, number, outline);
    };
    draw(SoftMark::Use, text, 28, 70);
    draw(SoftMark::Match, ReadableOn(kMatchColour, page), 40, 160);
}

void SoftMarks::Show(SoftMark mark, const std::vector<TextRange>& ranges) {
    const std::vector<TextRange> shown = Shown(mark);
    if (shown == ranges) return;
    Send(editor_, Sci::SCI_SETINDICATORCURRENT, static_cast<int>(mark));
    if (!shown.empty()) Send(editor_, Sci::SCI_INDICATORCLEARRANGE, 0, TextLength(editor_));
    for (const TextRange& range : ranges)
        Send(editor_, Sci::SCI_INDICATORFILLRANGE, range.begin, range.end - range.begin);
}

std::vector<TextRange> SoftMarks::Shown(SoftMark mark) const {
    const int number = static_cast<int>(mark);
    std::vector<TextRange> ranges;
    const long end = TextLength(editor_);
    for (long place = 0; place < end;) {
        const long next = Send(editor_, Sci::SCI_INDICATOREND, number, place);
        if (Send(editor_, Sci::SCI_INDICATORVALUEAT, number, place) != 0)
            ranges.push_back({place, next > place ? next : end});
        if (next <= place) break;
        place = next;
    }
    return ranges;
}

}  // namespace zentro
