#include "ui/editor/line_edits.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "desktop/block_words.h"
#include "ui/editor/scintilla_text.h"
#include "ui/editor/source_editor.h"
#include "world/named_world.h"

namespace zentro {

namespace {

using Sci = QsciScintillaBase;

constexpr char kComment = ';';

struct LineRange {
    int first = 0;
    int last = 0;
};

LineRange SelectedLines(SourceEditor& editor) {
    const long begin = Send(editor, Sci::SCI_GETSELECTIONSTART);
    const long end = Send(editor, Sci::SCI_GETSELECTIONEND);
    LineRange lines{LineOf(editor, begin), LineOf(editor, end)};
    if (lines.last > lines.first && end == LineBegin(editor, lines.last)) --lines.last;
    return lines;
}

/// An end of the selection, by its line and its distance from the line's beginning, in bytes.
struct TextPoint {
    int line = 0;
    long offset = 0;

    bool operator==(const TextPoint&) const = default;
    bool operator<(const TextPoint& other) const {
        return std::pair(line, offset) < std::pair(other.line, other.offset);
    }
};

/// Keeps the selection on its text while the text before it becomes longer or shorter.
class SelectionPoints {
  public:
    explicit SelectionPoints(SourceEditor& editor)
        : editor_(editor),
          anchor_(PointAt(Send(editor, Sci::SCI_GETANCHOR))),
          caret_(PointAt(CaretPosition(editor))) {}

    /// A piece of a line was replaced. What comes right before a selection becomes part of it.
    void Edited(int line, long begin, long oldLength, std::size_t newLength) {
        const auto length = static_cast<long>(newLength);
        const bool isSelection = anchor_ != caret_;
        const TextPoint* first = &std::min(anchor_, caret_);
        for (TextPoint* point : {&anchor_, &caret_}) {
            if (point->line != line || point->offset < begin) continue;
            const bool stays = isSelection && point == first && point->offset == begin;
            if (stays) continue;
            const bool isBehind = point->offset >= begin + oldLength;
            point->offset = isBehind ? point->offset + length - oldLength
                                     : std::min(point->offset, begin + length);
        }
    }

    void MoveBy(int lines) {
        anchor_.line += lines;
        caret_.line += lines;
    }

    void Restore() const {
        Send(editor_, Sci::SCI_SETANCHOR, PositionOf(anchor_));
        Send(editor_, Sci::SCI_SETCURRENTPOS, PositionOf(caret_));
        Send(editor_, Sci::SCI_CHOOSECARETX);
        Send(editor_, Sci::SCI_SCROLLCARET);
    }

  private:
    TextPoint PointAt(long position) const {
        const int line = LineOf(editor_, position);
        return {line, position - LineBegin(editor_, line)};
    }
    /// A line may be the last one, before which the selection ended, and be gone.
    long PositionOf(const TextPoint& point) const {
        if (point.line >= LineCount(editor_)) return TextLength(editor_);
        return std::min(LineBegin(editor_, point.line) + point.offset,
                        LineEnd(editor_, point.line));
    }

    SourceEditor& editor_;
    TextPoint anchor_;
    TextPoint caret_;
};

/// Replaces a piece of a line, by its distance from the line's beginning, in bytes.
void ReplaceInLine(SourceEditor& editor, int line, long offset, long length,
                   const std::string& text) {
    const long begin = LineBegin(editor, line) + offset;
    Send(editor, Sci::SCI_SETTARGETSTART, begin);
    Send(editor, Sci::SCI_SETTARGETEND, begin + length);
    editor.SendScintilla(Sci::SCI_REPLACETARGET, static_cast<unsigned long>(text.size()),
                         text.data());
}

/// The lines that a comment sign is put before or taken from.
std::vector<int> LinesWithText(SourceEditor& editor, const LineRange& range) {
    std::vector<int> all;
    std::vector<int> lines;
    for (int line = range.first; line <= range.last; ++line) {
        all.push_back(line);
        if (LineText(editor, line).find_first_not_of(" \t") != std::string::npos)
            lines.push_back(line);
    }
    return lines.empty() ? all : lines;
}

std::size_t Indentation(const std::string& line) {
    return std::min(line.find_first_not_of(" \t"), line.size());
}

bool IsComment(const std::string& line) {
    return line.substr(Indentation(line)).starts_with(kComment);
}

void TakeComment(SourceEditor& editor, int line, SelectionPoints& selection) {
    const std::string text = LineText(editor, line);
    const std::size_t begin = Indentation(text);
    const long length = text.substr(begin + 1).starts_with(' ') ? 2 : 1;
    ReplaceInLine(editor, line, static_cast<long>(begin), length, {});
    selection.Edited(line, static_cast<long>(begin), length, 0);
}

void PutComment(SourceEditor& editor, int line, long column, SelectionPoints& selection) {
    const std::string comment{kComment, ' '};
    const long begin = LineBegin(editor, line);
    const long offset = Send(editor, Sci::SCI_FINDCOLUMN, line, column) - begin;
    ReplaceInLine(editor, line, offset, 0, comment);
    selection.Edited(line, offset, 0, comment.size());
}

const Statement* BlockWordOf(SourceEditor& editor, int line) {
    return FindBlockWord(editor.Commands(), LineText(editor, line));
}

/// Into a block and out of it goes a level of indentation: how many columns a line has to be put in
/// that has passed this one.
long IndentationPast(const Statement* passed, int by) {
    constexpr long kStep = 4;
    if (passed == nullptr || passed->edge.role == BlockRole::Continues) return 0;
    const bool goesIn = (passed->edge.role == BlockRole::Opens) == (by > 0);
    return goesIn ? kStep : -kStep;
}

void Indent(SourceEditor& editor, const LineRange& range, long columns,
            SelectionPoints& selection) {
    for (const int line : LinesWithText(editor, range)) {
        const auto indentation = static_cast<long>(Indentation(LineText(editor, line)));
        const long taken = std::clamp(-columns, 0L, indentation);
        const auto put = static_cast<std::size_t>(std::max(columns, 0L));
        ReplaceInLine(editor, line, 0, taken, std::string(put, ' '));
        selection.Edited(line, 0, taken, put);
    }
}

/// Lines that have passed the edge of a block, or whose block's edge has passed a line. Of two
/// edges that have passed each other nothing can be told.
void IndentMoved(SourceEditor& editor, const LineRange& moved, int by, SelectionPoints& selection) {
    const int passed = by < 0 ? moved.last + 1 : moved.first - 1;
    const Statement* edge = moved.first == moved.last ? BlockWordOf(editor, moved.first) : nullptr;
    const Statement* passedEdge = BlockWordOf(editor, passed);
    if (edge == nullptr) return Indent(editor, moved, IndentationPast(passedEdge, by), selection);
    if (passedEdge == nullptr)
        Indent(editor, {passed, passed}, IndentationPast(edge, -by), selection);
}

/// The neighbour goes to the other side of the lines: marks beside the lines themselves stay where
/// they are.
void MoveLines(SourceEditor& editor, int by) {
    const LineRange range = SelectedLines(editor);
    const int neighbour = by < 0 ? range.first - 1 : range.last + 1;
    if (neighbour < 0 || neighbour == LineCount(editor)) return;
    SelectionPoints selection(editor);
    const std::string text = LineText(editor, neighbour);
    const auto length = static_cast<long>(text.size());
    const int otherSide = by < 0 ? range.last : range.first;
    const LineMove move{neighbour + 1, 1, 0, otherSide + 1};
    Send(editor, Sci::SCI_BEGINUNDOACTION);
    editor.EditLines(move, [&] {
        if (by < 0) {
            ReplaceInLine(editor, neighbour, 0, length + 1, {});
            const int last = range.last - 1;
            const long end = LineEnd(editor, last) - LineBegin(editor, last);
            ReplaceInLine(editor, last, end, 0, '\n' + text);
        } else {
            const long end = LineEnd(editor, range.last) - LineBegin(editor, range.last);
            ReplaceInLine(editor, range.last, end, length + 1, {});
            ReplaceInLine(editor, range.first, 0, 0, text + '\n');
        }
    });
    selection.MoveBy(by);
    IndentMoved(editor, {range.first + by, range.last + by}, by, selection);
    Send(editor, Sci::SCI_ENDUNDOACTION);
    selection.Restore();
}

}  // namespace

void ToggleComment(SourceEditor& editor) {
    const std::vector<int> lines = LinesWithText(editor, SelectedLines(editor));
    const bool areComments =
        std::ranges::all_of(lines, [&](int line) { return IsComment(LineText(editor, line)); });
    const auto columnOf = [&](int line) { return Send(editor, Sci::SCI_GETLINEINDENTATION, line); };
    const long column = columnOf(*std::ranges::min_element(lines, {}, columnOf));
    SelectionPoints selection(editor);
    Send(editor, Sci::SCI_BEGINUNDOACTION);
    for (const int line : lines) {
        if (areComments) {
            TakeComment(editor, line, selection);
        } else {
            PutComment(editor, line, column, selection);
        }
    }
    Send(editor, Sci::SCI_ENDUNDOACTION);
    selection.Restore();
}

void Duplicate(SourceEditor& editor) {
    Send(editor, Sci::SCI_SELECTIONDUPLICATE);
}

void MoveLinesUp(SourceEditor& editor) {
    MoveLines(editor, -1);
}
void MoveLinesDown(SourceEditor& editor) {
    MoveLines(editor, 1);
}

void ReplacePieces(SourceEditor& editor, const std::vector<LinePiece>& pieces,
                   const std::string& text) {
    std::vector<PieceChange> changes;
    changes.reserve(pieces.size());
    for (const LinePiece& piece : pieces)
        changes.push_back({piece, text});
    ReplacePieces(editor, std::move(changes));
}

void ReplacePieces(SourceEditor& editor, std::vector<PieceChange> changes) {
    SelectionPoints selection(editor);
    // From the end, so that the places of the others stay right.
    std::ranges::sort(changes, [](const PieceChange& a, const PieceChange& b) {
        return std::pair(a.piece.line, a.piece.column) > std::pair(b.piece.line, b.piece.column);
    });
    Send(editor, Sci::SCI_BEGINUNDOACTION);
    for (const auto& [piece, text] : changes) {
        const int line = piece.line - 1;
        const long lineBegin = LineBegin(editor, line);
        const long begin = Send(editor, Sci::SCI_POSITIONRELATIVE, lineBegin, piece.column);
        const long end = Send(editor, Sci::SCI_POSITIONRELATIVE, begin, piece.length);
        ReplaceInLine(editor, line, begin - lineBegin, end - begin, text);
        selection.Edited(line, begin - lineBegin, end - begin, text.size());
    }
    Send(editor, Sci::SCI_ENDUNDOACTION);
    selection.Restore();
}

void NameWorld(SourceEditor& editor, const std::string& world) {
    const std::string comment = "; world: " + world;
    const std::optional<std::size_t> old = world::LineOfWorld(editor.TextBytes());
    Send(editor, Sci::SCI_BEGINUNDOACTION);
    if (old) {
        const int line = static_cast<int>(*old);
        const long begin = LineBegin(editor, line);
        const long end = Send(editor, Sci::SCI_GETLINEENDPOSITION, line);
        ReplaceInLine(editor, line, 0, end - begin, comment);
    } else {
        ReplaceInLine(editor, 0, 0, 0, comment + '\n');
    }
    Send(editor, Sci::SCI_ENDUNDOACTION);
}

}  // namespace zentro
