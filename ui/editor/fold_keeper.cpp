#include "ui/editor/fold_keeper.h"

#include <algorithm>

#include "desktop/block_words.h"
#include "ui/editor/scintilla_text.h"

namespace zentro {

namespace {

using Sci = QsciScintillaBase;

constexpr int kPortion = 1000;  // lines: well below a millisecond

int LevelOf(const LineFold& fold) {
    return Sci::SC_FOLDLEVELBASE + fold.depth + (fold.isHeader ? Sci::SC_FOLDLEVELHEADERFLAG : 0);
}

}  // namespace

FoldKeeper::FoldKeeper(QsciScintilla& editor, const CommandCatalogue& commands)
    : QObject(&editor), editor_(editor), commands_(commands) {
    rest_.setSingleShot(true);
    connect(&rest_, &QTimer::timeout, this, &FoldKeeper::WorkOn);
}

void FoldKeeper::Edited(int line, int linesAdded) {
    touched_.Edit(line, linesAdded);
    if (!rest_.isActive()) rest_.start(0);
}

void FoldKeeper::WorkOn() {
    if (DoPortion()) rest_.start(0);
}

void FoldKeeper::Finish() {
    while (DoPortion()) {
    }
    rest_.stop();
}

int FoldKeeper::DepthBefore(int line) {
    if (line == 0) return 0;
    const long level = Send(editor_, Sci::SCI_GETFOLDLEVEL, line - 1);
    const auto depth =
        static_cast<int>(level & Sci::SC_FOLDLEVELNUMBERMASK) - Sci::SC_FOLDLEVELBASE;
    return FoldOf(FindBlockWord(commands_, LineText(editor_, line - 1)), depth).nextDepth;
}

bool FoldKeeper::SetLevel(int line, int level) {
    if (Send(editor_, Sci::SCI_GETFOLDLEVEL, line) == level) return false;
    Send(editor_, Sci::SCI_SETFOLDLEVEL, line, level);
    return true;
}

bool FoldKeeper::DoPortion() {
    const int lines = LineCount(editor_);
    if (touched_.IsEmpty() || touched_.first >= lines) {
        touched_.Clear();
        return false;
    }
    const int first = touched_.first;
    const int end = std::min(first + kPortion, lines);
    const std::string text =
        TextBetween(editor_, LineBegin(editor_, first), NextLineBegin(editor_, end - 1));
    std::string_view rest = text;
    int depth = DepthBefore(first);
    for (int line = first; line < end; ++line) {
        const std::size_t length = std::min(rest.find('\n'), rest.size());
        const LineFold fold = FoldOf(FindBlockWord(commands_, rest.substr(0, length)), depth);
        rest.remove_prefix(std::min(length + 1, rest.size()));
        depth = fold.nextDepth;
        if (!SetLevel(line, LevelOf(fold)) && line > touched_.last) {
            touched_.Clear();  // from here on nothing has changed
            return false;
        }
    }
    if (end == lines) {
        touched_.Clear();
        return false;
    }
    // The level of the last line may have changed, so the next one has to be looked at.
    touched_ = {end, std::max(touched_.last, end)};
    return true;
}

}  // namespace zentro
