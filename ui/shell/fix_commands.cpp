#include "ui/shell/fix_commands.h"

#include <algorithm>
#include <set>

#include "desktop/fixes.h"
#include "desktop/live_check.h"
#include "ui/editor/line_edits.h"
#include "ui/editor/source_editor.h"
#include "ui/editor/source_window.h"
#include "ui/shell/source_files.h"

namespace zentro {

FixCommands::FixCommands(Programs& programs, SourceFiles& files, LiveCheck& checks,
                         NameCommands::Tell tell, QObject* parent)
    : QObject(parent),
      programs_(programs),
      files_(files),
      checks_(checks),
      tell_(std::move(tell)) {}

/// What is said of the text as it stands.
FixCommands::Messages FixCommands::MessagesNow(SourceWindow& source) {
    files_.BringToFront(source.Id());
    checks_.CheckForCommand();
    const OpenFile* file = programs_.File(source.Id());
    if (file == nullptr) return {};
    return programs_.MessagesOf(*file).value_or(Messages());
}

void FixCommands::FixLine() {
    FixLine(*files_.Front(), files_.Front()->CaretLine());
}

void FixCommands::FixLine(SourceWindow& source, int line) {
    const Messages messages = MessagesNow(source);
    const bool isCaretLine = line == source.CaretLine();
    const Fix* fix = FixAt(messages, line, isCaretLine ? source.Editor()->CaretColumn() : -1);
    if (fix == nullptr) return TellNone(source, messages, line);
    Apply(source, {*fix});
}

void FixCommands::FixAllOfKind() {
    SourceWindow& source = *files_.Front();
    const Messages messages = MessagesNow(source);
    const Fix* fix = FixAt(messages, source.CaretLine(), source.Editor()->CaretColumn());
    if (fix == nullptr) return TellNone(source, messages, source.CaretLine());
    Apply(source, FixesOfKind(messages, *fix));
}

void FixCommands::FixAsTold(SourceWindow& source, const Fix& fix) {
    const Messages messages = MessagesNow(source);
    const Fix* now = SameFix(messages, fix.line, fix);
    if (now != nullptr) return Apply(source, {*now});
    tell_(
        tr("This line has changed since the message was written. Compile again to see "
           "what is left."));
}

void FixCommands::Apply(SourceWindow& source, const std::vector<Fix>& fixes) {
    std::vector<PieceChange> changes;
    std::set<int> lines;
    for (const Fix& fix : fixes) {
        changes.push_back({{fix.line, fix.column - 1, fix.length}, fix.text});
        lines.insert(fix.line);
    }
    ReplacePieces(*source.Editor(), std::move(changes));
    checks_.CheckForCommand();
    source.Refresh();  // what is told comes after what the line says now
    const auto count = static_cast<int>(lines.size());
    if (count == 1) return tell_(tr("Line %1 is fixed. Undo takes it back.").arg(*lines.begin()));
    tell_(tr("%1 lines are fixed. Undo takes all of it back.").arg(count));
}

void FixCommands::TellNone(SourceWindow& source, const Messages& messages, int line) {
    const bool isMarked = std::ranges::any_of(
        messages, [&](const LineMessage& message) { return message.line == line; });
    source.Refresh();
    tell_(isMarked
              ? tr("What this line means can only be guessed, so nothing is written for you. F1 "
                   "tells more about its message.")
              : tr("This line has no message, so there is nothing to fix."));
}

}  // namespace zentro
