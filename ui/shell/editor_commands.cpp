#include "ui/shell/editor_commands.h"

#include <QApplication>
#include <algorithm>

#include "desktop/live_check.h"
#include "desktop/source_search.h"
#include "ui/editor/find_bar.h"
#include "ui/editor/line_edits.h"
#include "ui/editor/outline_box.h"
#include "ui/editor/source_editor.h"
#include "ui/editor/source_window.h"
#include "ui/output/compiler_output_window.h"
#include "ui/shell/source_files.h"

namespace zentro {

namespace {

bool HasFocus(const QWidget& window) {
    const QWidget* focus = QApplication::focusWidget();
    return focus != nullptr && window.isAncestorOf(focus);
}

}  // namespace

struct EditorCommands::Row {
    CommandId id;
    std::function<void(EditorCommands&)> run;
};

const std::vector<EditorCommands::Row>& EditorCommands::Rows() {
    using enum CommandId;
    static const std::vector<Row> kRows{
        {CommandId::ToggleComment, [](auto& c) { c.Edit(&zentro::ToggleComment); }},
        {CommandId::DuplicateLines, [](auto& c) { c.Edit(&zentro::Duplicate); }},
        {CommandId::MoveLinesUp, [](auto& c) { c.Edit(&zentro::MoveLinesUp); }},
        {CommandId::MoveLinesDown, [](auto& c) { c.Edit(&zentro::MoveLinesDown); }},
        {NextMessage, [](auto& c) { c.ShowMessage(Direction::Forward); }},
        {PreviousMessage, [](auto& c) { c.ShowMessage(Direction::Backward); }},
        {CommandId::FixLine, [](auto& c) { c.FixLine(); }},
        {FixAllOfKind, [](auto& c) { c.fixes_.FixAllOfKind(); }},
        {GoToDeclaration, [](auto& c) { c.names_.GoToDeclaration(); }},
        {GoBack, [](auto& c) { c.names_.GoBack(); }},
        {RenameName, [](auto& c) { c.names_.RenameName(); }},
        {FindInText, [](auto& c) { c.OpenFindBar(); }},
        {GoToRoutine, [](auto& c) { c.OpenOutline(); }},
    };
    return kRows;
}

EditorCommands::EditorCommands(Workbench& workbench, Programs& programs, SourceFiles& files,
                               LiveCheck& checks, SourceSearch& search, Surroundings surroundings,
                               QObject* parent)
    : QObject(parent),
      programs_(programs),
      files_(files),
      checks_(checks),
      search_(search),
      surroundings_(std::move(surroundings)),
      names_(workbench, programs, files, checks, surroundings_.tell, this),
      fixes_(programs, files, checks, surroundings_.tell, this) {
    connect(&files_, &SourceFiles::Opened, this, [this](SourceWindow* source) {
        connect(source->Outline(), &OutlineBox::LineChosen, this, [this, source](int line) {
            names_.NotePlace(*source);
            source->PutCaretAt(line);
        });
        connect(source, &SourceWindow::FixWanted, this,
                [this, source](int line) { fixes_.FixLine(*source, line); });
        connect(
            source->Bar(), &FindBar::Searched, this,
            [this](const QString& text, FindOptions options) { search_.Remember(text, options); });
    });
}

EditorCommands::~EditorCommands() = default;

std::vector<CommandId> EditorCommands::Ids() {
    std::vector<CommandId> ids;
    for (const Row& row : Rows())
        ids.push_back(row.id);
    return ids;
}

void EditorCommands::Run(CommandId id) {
    const auto row = std::ranges::find(Rows(), id, &Row::id);
    if (row != Rows().end() && files_.Front() != nullptr) row->run(*this);
}

void EditorCommands::Edit(void (*edit)(SourceEditor&)) {
    edit(*files_.Front()->Editor());
}

/// In the compiler's window the keys walk through its own messages.
void EditorCommands::ShowMessage(Direction direction) {
    CompilerOutputWindow* output = surroundings_.output();
    if (output != nullptr && HasFocus(*output)) {
        return direction == Direction::Forward ? output->ShowNextMessage()
                                               : output->ShowPreviousMessage();
    }
    checks_.CheckForCommand();
    const OpenFile front = *programs_.Front();
    const ProgramReport* report = programs_.ReportOf(programs_.RootOf(front));
    const auto stop =
        report == nullptr
            ? std::nullopt
            : NextStop(*report, front.key, files_.Front()->Editor()->CaretLine(), direction);
    if (!stop) return TellNoMessage(report);
    SourceWindow* source = names_.Show(stop->file);
    if (source == nullptr) return;
    if (told_ != nullptr && told_ != source) told_->Editor()->Marks().ShowBelow(0, {});
    told_ = source;
    // A file that was opened only now is checked as it stands before its message is shown, or the
    // next check would take that away.
    checks_.CheckForCommand();
    source->PutCaretAt(stop->line);
    source->ShowMessageBeside();
    surroundings_.selectInLog(source->Id(), stop->line);
}

/// In the compiler's window the key is about its own message.
void EditorCommands::FixLine() {
    CompilerOutputWindow* output = surroundings_.output();
    if (output != nullptr && HasFocus(*output)) return output->FixMessage();
    fixes_.FixLine();
}

void EditorCommands::TellNoMessage(const ProgramReport* report) {
    const bool isWhole = report == nullptr || report->succeeded;
    surroundings_.tell(isWhole ? tr("There are no messages: no mistakes were found.")
                               : tr("No line has a message, but something is missing in the "
                                    "program. Compile it (F5) to read what."));
}

void EditorCommands::OpenFindBar() {
    SourceWindow* source = files_.Front();
    files_.BringToFront(source->Id());
    source->Bar()->Open();
}

void EditorCommands::OpenOutline() {
    SourceWindow* source = files_.Front();
    files_.BringToFront(source->Id());
    if (!source->Outline()->isEnabled())
        return surroundings_.tell(tr("There is no routine, event or table in this file yet."));
    source->Outline()->showPopup();
}

}  // namespace zentro
