#include "ui/shell/name_commands.h"

#include <chrono>
#include <map>

#include "desktop/live_check.h"
#include "desktop/rename.h"
#include "ui/dialogs/rename_dialog.h"
#include "ui/editor/line_edits.h"
#include "ui/editor/scintilla_text.h"
#include "ui/editor/source_editor.h"
#include "ui/editor/source_window.h"
#include "ui/shell/source_files.h"
#include "ui/support/dialogs.h"

namespace zentro {

namespace {

using namespace std::chrono_literals;
using Sci = QsciScintillaBase;

constexpr int kPlaceMarker = 20;  ///< not seen; holds a place of the history
constexpr std::size_t kLongestHistory = 100;

constexpr std::chrono::milliseconds kRest = 250ms;
/// A program that takes longer to read is read less often.
constexpr std::size_t kManyLines = 20000;
constexpr std::chrono::milliseconds kLongRest = 1000ms;

/// The place as bytes of the editor's text; nothing of it in a line that is not there.
TextRange RangeOf(SourceEditor& editor, const TextPlace& place) {
    if (place.line > LineCount(editor)) return {};
    const long begin =
        Send(editor, Sci::SCI_POSITIONRELATIVE, LineBegin(editor, place.line - 1), place.column);
    return {begin, Send(editor, Sci::SCI_POSITIONRELATIVE, begin, place.length)};
}

bool HoldsName(SourceEditor& editor, const TextPlace& place, const QString& name) {
    const TextRange range = RangeOf(editor, place);
    const QString text = QString::fromStdString(TextBetween(editor, range.begin, range.end));
    return text.compare(name, Qt::CaseInsensitive) == 0;
}

const IndexedName* NameAtCaret(const ProgramIndex& index, const SourceWindow& source) {
    SourceEditor& editor = *source.Editor();
    return index.NameAt(source.File().key, editor.CaretLine(), editor.CaretColumn());
}

/// Or else the one before it, with only signs between: behind "CALL Wheels()" it is clear what is
/// meant.
const IndexedName* NameAtOrBeforeCaret(const ProgramIndex& index, const SourceWindow& source) {
    SourceEditor& editor = *source.Editor();
    const QString line = QString::fromStdString(LineText(editor, editor.CaretLine() - 1));
    int column = editor.CaretColumn();
    const auto isSign = [](QChar c) { return c.isSpace() || c == '(' || c == ')'; };
    while (column > 0 && column <= line.size() && isSign(line[column - 1]))
        --column;
    const IndexedName* here = NameAtCaret(index, source);
    return here != nullptr ? here : index.NameAt(source.File().key, editor.CaretLine(), column);
}

}  // namespace

NameCommands::NameCommands(Workbench& workbench, Programs& programs, SourceFiles& files,
                           LiveCheck& checks, Tell tell, QObject* parent)
    : QObject(parent),
      workbench_(workbench),
      programs_(programs),
      files_(files),
      checks_(checks),
      tell_(std::move(tell)) {
    rest_.setSingleShot(true);
    connect(&rest_, &QTimer::timeout, this, &NameCommands::MarkUses);
    connect(&files_, &SourceFiles::StatsChanged, this, &NameCommands::MarkLater);
    connect(&programs_, &Programs::Changed, this, &NameCommands::MarkLater);
}

NameCommands::~NameCommands() = default;

/// The program of the file in front as it stands; nothing without one.
std::optional<ProgramIndex> NameCommands::ReadProgram() {
    if (programs_.Front() == nullptr) return std::nullopt;
    checks_.CheckForCommand();
    const OpenFile* root = programs_.Find(programs_.RootOf(*programs_.Front()));
    if (root == nullptr) return std::nullopt;
    return ProgramIndex(workbench_.configuration, *root, workbench_.settings, programs_);
}

QString NameCommands::WhyNoName(const ProgramIndex& index) const {
    const QString none =
        tr("There is no name of the program at the caret. F1 explains words of the language.");
    return index.Gap().isEmpty() ? none : none + ' ' + index.Gap();
}

void NameCommands::GoToDeclaration() {
    SourceWindow* source = files_.Front();
    const std::optional<ProgramIndex> index = ReadProgram();
    if (source == nullptr || !index) return;
    const QString key = source->File().key;
    const int line = source->Editor()->CaretLine();
    const QString included = index->IncludedAt(key, line);
    if (!included.isEmpty()) return GoTo(*source, {included, 1, 0, 0});
    const IndexedName* name = NameAtOrBeforeCaret(*index, *source);
    if (name == nullptr) return tell_(WhyNoName(*index));
    if (name->declaration.file == key && name->declaration.line == line)
        return tell_(tr("%1 is declared here.").arg(name->name));
    GoTo(*source, name->declaration);
}

SourceWindow* NameCommands::Show(const QString& key) {
    SourceWindow* window = files_.Find(key);
    if (window == nullptr) return files_.Open(key);
    files_.BringToFront(window->Id());
    return window;
}

void NameCommands::GoTo(SourceWindow& from, const TextPlace& place) {
    const QPointer<SourceWindow> origin(&from);
    SourceWindow* window = Show(place.file);
    if (window == nullptr) return;
    if (origin != nullptr) NotePlace(*origin);
    SourceEditor& editor = *window->Editor();
    const TextRange range = RangeOf(editor, place);
    editor.setFocus();
    editor.SelectRange(range.begin, range.begin);
}

void NameCommands::NotePlace(SourceWindow& source) {
    SourceEditor& editor = *source.Editor();
    editor.markerDefine(QsciScintilla::Invisible, kPlaceMarker);
    history_.push_back(
        {&source, editor.markerAdd(editor.CaretLine() - 1, kPlaceMarker), editor.CaretColumn()});
    if (history_.size() <= kLongestHistory) return;
    const Place& oldest = history_.front();
    if (oldest.window != nullptr) oldest.window->Editor()->markerDeleteHandle(oldest.handle);
    history_.erase(history_.begin());
}

void NameCommands::GoBack() {
    while (!history_.empty()) {
        const Place place = history_.back();
        history_.pop_back();
        if (place.window == nullptr || programs_.File(place.window->Id()) == nullptr)
            continue;  // closed since
        SourceEditor& editor = *place.window->Editor();
        const int line = editor.markerLine(place.handle);
        editor.markerDeleteHandle(place.handle);
        if (line < 0) continue;  // its line is gone
        files_.BringToFront(place.window->Id());
        const long position =
            Send(editor, Sci::SCI_POSITIONRELATIVE, LineBegin(editor, line), place.column);
        editor.setFocus();
        const long best =
            position == 0 ? LineBegin(editor, line) : std::min(position, LineEnd(editor, line));
        return editor.SelectRange(best, best);
    }
    tell_(tr("There is no place to go back to."));
}

QString NameCommands::PlacesText(const IndexedName& name) const {
    const auto places = static_cast<int>(name.places.size());
    const auto files = static_cast<int>(name.FileCount());
    if (places == 1) return tr("%1 stands at one place only, where it is declared.").arg(name.name);
    if (files == 1) return tr("%1 stands at %2 places.").arg(name.name).arg(places);
    return tr("%1 stands at %2 places in %3 files.").arg(name.name).arg(places).arg(files);
}

void NameCommands::RenameName() {
    SourceWindow* source = files_.Front();
    const std::optional<ProgramIndex> index = ReadProgram();
    if (source == nullptr || !index) return;
    const IndexedName* name = NameAtCaret(*index, *source);
    if (name == nullptr) return tell_(WhyNoName(*index));
    if (!index->Gap().isEmpty()) {
        return workbench_.dialogs.ShowMessage(
            source, tr("%1 cannot be renamed, because not all of the program can be read. %2")
                        .arg(name->name, index->Gap()));
    }
    const OpenFile root = *programs_.Find(index->Root());
    const Rename rename(workbench_.configuration, workbench_.settings, programs_, root, *index,
                        *name);
    RenameDialog dialog(
        name->name, PlacesText(*name),
        [&rename](const QString& newName) { return rename.ProblemWith(newName); }, source);
    if (!workbench_.dialogs.Run(dialog)) return;
    PutName(*source, *name, dialog.NewName());
}

/// Everything is looked at before anything is changed: texts may have been edited by others while
/// the question stood there.
void NameCommands::PutName(SourceWindow& front, const IndexedName& name, const QString& newName) {
    const FileId id = front.Id();
    std::map<QString, std::vector<TextPlace>> byFile;
    for (const IndexedName::Place& place : name.places)
        byFile[place.file].push_back(place);
    std::map<QString, SourceWindow*> windows;
    bool isAsRead = true;
    for (const auto& [file, places] : byFile) {
        SourceWindow* window = files_.Find(file);
        if (window == nullptr) window = files_.Open(file);
        if (window == nullptr) return;  // it has been told why
        windows[file] = window;
        for (const TextPlace& place : places)
            isAsRead = isAsRead && HoldsName(*window->Editor(), place, name.name);
    }
    files_.BringToFront(id);
    if (!isAsRead) return tell_(tr("The program has been changed meanwhile. Nothing was renamed."));
    for (const auto& [file, places] : byFile) {
        SourceEditor& editor = *windows[file]->Editor();
        std::vector<LinePiece> pieces;
        for (const TextPlace& place : places)
            pieces.push_back({place.line, place.column, place.length});
        ReplacePieces(editor, pieces, editor.Spelled(newName.toStdString()));
    }
    tell_(byFile.size() == 1
              ? tr("%1 is called %2 now. Undo takes it back.").arg(name.name, newName)
              : tr("%1 is called %2 now, in %3 files that are not saved yet.")
                    .arg(name.name, newName)
                    .arg(byFile.size()));
}

void NameCommands::MarkLater() {
    const bool isLong = index_ && index_->LineCount() > kManyLines;
    rest_.start(isLong ? kLongRest : kRest);
}

void NameCommands::MarkUses() {
    SourceWindow* source = files_.Front();
    if (marked_ != nullptr && marked_ != source) marked_->Editor()->Soft().Clear(SoftMark::Use);
    marked_ = source;
    if (source == nullptr) return;
    if (!source->Editor()->IsCaretInWord()) return source->Editor()->Soft().Clear(SoftMark::Use);
    const OpenFile* root = programs_.Find(programs_.RootOf(source->File()));
    if (root == nullptr) return;
    if (!index_ || index_->Root() != root->key || !index_->IsFresh(programs_))
        index_.emplace(workbench_.configuration, *root, workbench_.settings, programs_);
    std::vector<TextRange> ranges;
    if (const IndexedName* name = NameAtCaret(*index_, *source)) {
        for (const IndexedName::Place& place : name->places) {
            if (place.file == source->File().key)
                ranges.push_back(RangeOf(*source->Editor(), place));
        }
    }
    std::ranges::sort(ranges, {}, &TextRange::begin);
    source->Editor()->Soft().Show(SoftMark::Use, ranges);
}

}  // namespace zentro
