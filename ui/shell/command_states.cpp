#include "ui/shell/command_states.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QShortcut>
#include <QTextEdit>
#include <algorithm>

#include "desktop/programs.h"
#include "ui/editor/source_editor.h"
#include "ui/editor/source_window.h"
#include "ui/output/compiler_text_window.h"
#include "ui/shell/source_files.h"
#include "ui/terminal/terminal_window.h"

namespace zentro {

namespace {

/// What can be done with the text that the edit commands go to.
struct TextState {
    bool isText = false;
    bool canUndo = false;
    bool canRedo = false;
    bool hasSelection = false;
    bool isReadOnly = true;
};

/// QPlainTextEdit and QTextEdit are alike.
template <typename TextEdit>
TextState StateOfTextEdit(const TextEdit& text) {
    return {true, text.document()->isUndoAvailable(), text.document()->isRedoAvailable(),
            text.textCursor().hasSelection(), text.isReadOnly()};
}

TextState StateOfSource(const SourceEditor& editor) {
    return {true, editor.isUndoAvailable(), editor.isRedoAvailable(), editor.hasSelectedText(),
            editor.isReadOnly()};
}

/// A text box that has the focus takes the edit commands itself; otherwise the source window does.
TextState StateOfTarget(SourceWindow* source) {
    const QWidget* focus = QApplication::focusWidget();
    const bool isInSource = source != nullptr && source->TakesEdits(focus);
    if (isInSource) return StateOfSource(*source->Editor());
    if (const auto* line = qobject_cast<const QLineEdit*>(focus)) {
        return {true, line->isUndoAvailable(), line->isRedoAvailable(), line->hasSelectedText(),
                line->isReadOnly()};
    }
    if (const auto* text = qobject_cast<const QPlainTextEdit*>(focus))
        return StateOfTextEdit(*text);
    if (const auto* text = qobject_cast<const QTextEdit*>(focus)) return StateOfTextEdit(*text);
    return source == nullptr ? TextState() : StateOfSource(*source->Editor());
}

bool IsToSave(const OpenFile& file) {
    return file.IsChanged() || file.NeverSaved();
}

}  // namespace

CommandStates::CommandStates(const Programs& programs, SourceFiles& files,
                             Surroundings surroundings)
    : programs_(programs), files_(files), surroundings_(std::move(surroundings)) {
    for (const CommandRow& row : Commands()) {
        if (row.keyTellsWhy) AddTellingKey(row);
    }
    connect(&programs_, &Programs::Changed, this, &CommandStates::Update);
    connect(&files_, &SourceFiles::StatsChanged, this, &CommandStates::Update);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* focus) {
        FollowSelection(focus);
        Update();
    });
    const auto lookAtClipboard = [this] {
        const QMimeData* content = QGuiApplication::clipboard()->mimeData();
        clipboardHasText_ = content != nullptr && content->hasText();
        Update();
    };
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this, lookAtClipboard);
    lookAtClipboard();
}

CommandStates::~CommandStates() = default;

/// The key of a disabled command reaches nothing, and some commands have something to say then.
void CommandStates::AddTellingKey(const CommandRow& row) {
    auto* key = new QShortcut(QKeySequence(row.shortcut), surroundings_.window);
    QAction* action = surroundings_.action(row.id);
    connect(key, &QShortcut::activated, action, [action] { emit action->triggered(); });
    tellingKeys_.push_back({row.id, key});
}

/// Text boxes that are no source window tell of their selection themselves.
void CommandStates::FollowSelection(QWidget* focus) {
    if (focus_ != nullptr) focus_->disconnect(this);
    focus_ = focus;
    if (auto* line = qobject_cast<QLineEdit*>(focus)) {
        connect(line, &QLineEdit::selectionChanged, this, &CommandStates::Update);
        connect(line, &QLineEdit::textChanged, this, &CommandStates::Update);
    } else if (auto* plain = qobject_cast<QPlainTextEdit*>(focus)) {
        connect(plain, &QPlainTextEdit::selectionChanged, this, &CommandStates::Update);
    } else if (auto* rich = qobject_cast<QTextEdit*>(focus)) {
        connect(rich, &QTextEdit::selectionChanged, this, &CommandStates::Update);
    }
}

void CommandStates::Update() {
    for (const CommandRow& row : Commands()) {
        if (row.need != CommandNeed::Nothing)
            surroundings_.action(row.id)->setEnabled(IsMet(row.need));
    }
    for (const TellingKey& telling : tellingKeys_)
        telling.key->setEnabled(!surroundings_.action(telling.id)->isEnabled());
}

bool CommandStates::IsMet(CommandNeed need) const {
    const OpenFile* front = programs_.Front();
    const TextState text = StateOfTarget(files_.Front());
    switch (need) {
        case CommandNeed::Nothing: return true;
        case CommandNeed::ChildWindow: return surroundings_.front() != nullptr;
        case CommandNeed::SourceFile: return front != nullptr;
        case CommandNeed::FileToSave: return front != nullptr && IsToSave(*front);
        case CommandNeed::AnyFileToSave: return std::ranges::any_of(programs_.Files(), IsToSave);
        case CommandNeed::MainFile: return programs_.Main() != nullptr;
        case CommandNeed::SomethingToUndo: return text.canUndo;
        case CommandNeed::SomethingToRedo: return text.canRedo;
        case CommandNeed::TextToCut: return text.hasSelection && !text.isReadOnly;
        case CommandNeed::TextToCopy: return HasTextToCopy();
        case CommandNeed::TextToPaste: return clipboardHasText_ && !text.isReadOnly;
        case CommandNeed::TextToSelect: return text.isText;
        case CommandNeed::LineToStep:
        case CommandNeed::StepToTakeBack:
        case CommandNeed::RunningProgram:
        case CommandNeed::Breakpoint: return surroundings_.followsProgram(need);
    }
    return true;
}

bool CommandStates::HasTextToCopy() const {
    QWidget* front = surroundings_.front();
    if (const auto* terminal = qobject_cast<TerminalWindow*>(front))
        return !terminal->CopySelectedText().isEmpty();
    if (const auto* text = qobject_cast<CompilerTextWindow*>(front)) return text->HasSelection();
    return StateOfTarget(files_.Front()).hasSelection;
}

}  // namespace zentro
