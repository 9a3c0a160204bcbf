#include "ui/editor/source_window.h"

#include <QCloseEvent>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QVBoxLayout>
#include <utility>

#include "compiler/paths.h"
#include "config/file.h"
#include "desktop/fixes.h"
#include "desktop/text_file.h"
#include "ui/editor/find_bar.h"
#include "ui/editor/outline_box.h"
#include "ui/editor/source_editor.h"
#include "ui/support/colours.h"
#include "ui/support/dialogs.h"
#include "ui/support/source_font.h"

namespace zentro {

namespace {

constexpr const char* kNewFileName = "NewFile";

QString TextSetting(const SettingsStore& settings, SettingNumber number) {
    return QString::fromStdString(AsText(settings.GetSetting(number)));
}

QString FilePath(const QString& folder, const QString& fileName) {
    return QString::fromStdString(PathOf(folder.toStdString(), fileName.toStdString()));
}

}  // namespace

SourceWindow::SourceWindow(Workbench& workbench, Programs& programs, QWidget* parent)
    : QWidget(parent),
      workbench_(workbench),
      programs_(programs),
      editor_(new SourceEditor(workbench.configuration, this)),
      outline_(new OutlineBox(*editor_, workbench.configuration.commands, this)),
      findBar_(new FindBar(*editor_, this)),
      lineEnd_(SystemLineEnd()) {
    setObjectName("frmSource");
    setFocusProxy(editor_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(outline_);
    layout->addWidget(editor_, 1);
    layout->addWidget(findBar_);
    SetColouring();
    SetFormColours();
    SetFont();
    connect(editor_, &SourceEditor::StatsChanged, this,
            [this] { emit DocStatsChanged(DocStats()); });
    connect(editor_, &SourceEditor::FilesDropped, this, &SourceWindow::FilesDropped);
    connect(editor_, &SourceEditor::EditBegins, this, [this] { programs_.NoteEdited(id_); });
    connect(editor_, &SourceEditor::LinesGoing, this, [this] { programs_.NoteLinesGoing(id_); });
    connect(editor_, &SourceEditor::LinesMoved, this, &SourceWindow::NoteLinesMoved);
    connect(editor_, &SourceEditor::Undone, this, [this] { programs_.NoteUndone(id_); });
    connect(editor_, &SourceEditor::BreakpointClicked, this,
            [this](int line) { emit BreakpointWanted(id_, line); });
    connect(editor_, &SourceEditor::ConditionClicked, this,
            [this](int line) { emit ConditionWanted(id_, line); });
    connect(editor_, &SourceEditor::LampClicked, this, &SourceWindow::FixWanted);
    connect(editor_, &QsciScintilla::modificationChanged, this, [this](bool changed) {
        if (!changed) programs_.NoteAtSavedText(id_);
    });
    connect(&programs_, &Programs::Changed, this, &SourceWindow::Refresh);
}

SourceWindow::~SourceWindow() {
    programs_.disconnect(this);
    programs_.Remove(id_);
}

const OpenFile& SourceWindow::File() const {
    static const OpenFile kNone;
    const OpenFile* file = programs_.File(id_);
    return file == nullptr ? kNone : *file;
}

void SourceWindow::Open(const QString& folder, const QString& name) {
    programs_.Remove(id_);  // what the window showed before
    id_ = programs_.Add(folder, name, [this] { return Text(); });
    Refresh();
}

void SourceWindow::Refresh() {
    if (programs_.File(id_) == nullptr) return;
    ShowTitle();
    ShowReport();
}

void SourceWindow::ShowTitle() {
    setWindowTitle(FileTitle() + "[*] (Source Code)");
    setWindowModified(SourceChanged());
    editor_->setAccessibleName("Source text of " + FileTitle());
}

/// The marks of lines that were taken out are gone from the editor.
void SourceWindow::NoteLinesMoved(const LineMove& move) {
    if (move.removed > 0) {
        areMessagesWhole_ = isLineMarkWhole_ = areBreakpointsWhole_ = false;
    }
    programs_.NoteLinesMoved(id_, move);
}

/// Messages stand at their lines, and move with them, until there are others.
void SourceWindow::ShowReport() {
    const OpenFile& file = File();
    const ProgramReport* report = programs_.ReportOf(programs_.RootOf(file));
    const std::uint64_t serial = report == nullptr ? 0 : report->serial;
    if (serial == shownReport_ && areMessagesWhole_) return;
    const auto messages = programs_.MessagesOf(file);
    if (messages) {
        editor_->Marks().ShowMessages(*messages);
    } else if (report == nullptr) {
        editor_->Marks().ClearMessages();
    } else {
        return;
    }
    shownReport_ = serial;
    areMessagesWhole_ = true;
    editor_->Typing().SetProgramNames(programs_.NamesFor(file));
    emit DocStatsChanged(DocStats());
}

void SourceWindow::NewFile(int number) {
    lineEnd_ = SystemLineEnd();
    editor_->LoadText({}, false);
    Open({}, kNewFileName + QString::number(number));
}

/// The text of a file. A failure is told to the user.
std::optional<FileText> SourceWindow::ReadSource(const QString& folder, const QString& fileName) {
    const QString path = FilePath(folder, fileName);
    auto loaded = workbench_.disk->Ask(path, Patience::WhileWanted, [folder, path] {
        MendUnfinishedWrites(SystemPath(folder));
        return LoadText(path);
    });
    if (!loaded) return std::nullopt;  // the user would not wait
    if (loaded->problem.empty()) return std::move(loaded->file);
    workbench_.dialogs.ShowMessage(
        this, "Error Loading Source File:\n" + QString::fromStdString(loaded->problem));
    return std::nullopt;
}

bool SourceWindow::LoadFile(const QString& folder, const QString& fileName) {
    std::optional<FileText> file = ReadSource(folder, fileName);
    if (!file) return false;
    lineEnd_ = file->lineEnd;
    editor_->LoadText(std::move(file->text), file->isLastLineEnded);
    Open(folder, fileName);
    return true;
}

bool SourceWindow::Reload() {
    std::optional<FileText> file = ReadSource(PathName(), FileName());
    if (!file) return false;
    lineEnd_ = file->lineEnd;
    editor_->ReplaceText(std::move(file->text), file->isLastLineEnded);
    programs_.NoteSaved(id_, PathName(), FileName());
    editor_->setModified(false);
    return true;
}

void SourceWindow::BeginUndoGroup() {
    editor_->beginUndoAction();
}
void SourceWindow::EndUndoGroup() {
    editor_->endUndoAction();
}

SaveResult SourceWindow::SaveFile() {
    return AsksForName() ? SaveFileAs() : WriteTo(PathName(), FileName());
}

QString SourceWindow::ChooseName() {
    const FileChoice choice{tr("Save %1 As").arg(FileName()),
                            TextSetting(workbench_.settings, SettingNumber::SourceFolder),
                            IsNewFile() ? QString() : FileName(), kSourceFilter, "txt"};
    QString path = workbench_.dialogs.ChooseFileToSave(this, choice).value_or(QString());
    if (path.isEmpty()) return {};
    if (!QFileInfo(path).fileName().contains('.')) path += ".txt";
    return path;
}

SaveResult SourceWindow::SaveFileAs() {
    const QString path = ChooseName();
    if (path.isEmpty()) return SaveResult::Cancelled;
    const QFileInfo chosen(path);
    if (const OpenFile* other = programs_.Find(path); other != nullptr && other->id != id_) {
        workbench_.dialogs.ShowMessage(
            this, tr("%1 is open in another tab. Close that tab first, or choose another name.")
                      .arg(other->name));
        return SaveResult::Failed;
    }
    const QString folder = QDir::toNativeSeparators(chosen.absolutePath());
    const SaveResult result = WriteTo(folder, chosen.fileName());
    if (result != SaveResult::Saved) return result;
    workbench_.settings.SaveSetting(SettingNumber::SourceFolder, folder.toStdString());
    return result;
}

SaveResult SourceWindow::WriteTo(const QString& folder, const QString& fileName) {
    const QString path = FilePath(folder, fileName);
    const auto problem = workbench_.disk->Ask(
        path, Patience::WhileWanted,
        [path, text = FileText{editor_->TextBytes(), lineEnd_}] { return SaveText(path, text); });
    if (!problem) {
        workbench_.dialogs.ShowMessage(
            this,
            tr("%1 is not saved. %2, but what you wanted to save may still be written when it "
               "does. To be safe, save under another name in another folder.")
                .arg(fileName, kNoAnswer));
        return SaveResult::Failed;
    }
    if (!problem->empty()) {
        workbench_.dialogs.ShowMessage(
            this, "Could Not Save File. System returned the following error: \n" +
                      QString::fromStdString(*problem));
        return SaveResult::Failed;
    }
    programs_.NoteSaved(id_, folder, fileName);
    editor_->setModified(false);
    return SaveResult::Saved;
}

void SourceWindow::CutSelectedText() {
    editor_->cut();
}
void SourceWindow::CopySelectedText() {
    editor_->copy();
}
void SourceWindow::PasteSelectedText() {
    editor_->paste();
}
void SourceWindow::SelectAllText() {
    editor_->selectAll();
}
void SourceWindow::Undo() {
    editor_->undo();
}
void SourceWindow::Redo() {
    editor_->redo();
}
void SourceWindow::ZoomIn() {
    editor_->zoomIn();
}
void SourceWindow::ZoomOut() {
    editor_->zoomOut();
}
void SourceWindow::ResetZoom() {
    editor_->zoomTo(0);
}

int SourceWindow::Find(const QString& text, bool continueFromSelection, FindOptions options) {
    return FindInSource(*editor_, text, continueFromSelection, options);
}

bool SourceWindow::ReplaceIfSelected(const QString& text, const QString& replacement) {
    return ReplaceSelection(*editor_, text, replacement);
}

void SourceWindow::GotoLine(int line) {
    SelectLine(*editor_, line);
}
void SourceWindow::PutCaretAt(int line) {
    PutCaretInLine(*editor_, line);
}

void SourceWindow::SetFormColours() {
    const auto colour = [&](SettingNumber number) {
        return ToColour(AsInteger(workbench_.settings.GetSetting(number)), palette());
    };
    editor_->SetColours(colour(SettingNumber::EditorTextColour),
                        colour(SettingNumber::EditorPageColour));
}

void SourceWindow::SetFont() {
    const QString name = TextSetting(workbench_.settings, SettingNumber::EditorFontName).trimmed();
    const double size = AsNumber(workbench_.settings.GetSetting(SettingNumber::EditorFontSize));
    const auto refuse = [&](const QString& description) {
        workbench_.dialogs.ShowMessage(
            this, "Could not set Source Window Font name or size. Error was: " + description);
    };
    if (name.isEmpty()) return refuse("the font has no name");
    constexpr double kLargest = 200;
    if (size < 1 || size > kLargest)
        return refuse(QString("a font cannot have the size %1").arg(size));
    editor_->SetSourceFont(SourceFont(name, size));
}

void SourceWindow::SetColouring() {
    editor_->SetColouring(AsBoolean(workbench_.settings.GetSetting(SettingNumber::ColourSource)));
}

QString SourceWindow::Text() const {
    return editor_->text();
}

/// An example stays as it is for the next one who looks at it.
bool SourceWindow::AsksForName() const {
    if (IsNewFile()) return true;
    const QString folder = PathName();
    const auto isExample = workbench_.disk->Ask(FilePath(folder, FileName()), Patience::Short,
                                                [folder, examples = workbench_.ExamplesFolder()] {
                                                    return QDir(folder) == QDir(examples);
                                                });
    return isExample.value_or(false);
}

bool SourceWindow::IsNewFile() const {
    return FileName().startsWith(kNewFileName);
}

QString SourceWindow::DocStats() const {
    return QString("Line %1/%2").arg(editor_->CaretLine()).arg(editor_->lines());
}

/// A mistake in the line comes before the words that it is made of.
HelpTopic SourceWindow::TopicAtCursor() const {
    HelpTopic topic = editor_->TopicAtCaret();
    const auto messages = programs_.MessagesOf(File());
    if (!messages) return topic;
    const auto message = std::ranges::find_if(*messages, [&](const LineMessage& each) {
        return each.line == editor_->CaretLine() && !each.code.empty();
    });
    if (message == messages->end()) return topic;
    topic.word = message->code;
    topic.pages.insert(topic.pages.begin(), message->code);
    if (!message->hint.isEmpty())
        topic.ownCase = {message->line, message->sourceLine, message->hint,
                         message->fix ? FixedLine(message->sourceLine, *message->fix) : QString()};
    return topic;
}

void SourceWindow::SetText(const QString& text) {
    editor_->ReplaceText(FromFileBytes((text + '\n').toStdString()).text, false);
}

void SourceWindow::MarkLine(const std::optional<LineMark>& mark) {
    if (mark == lineMark_ && isLineMarkWhole_) return;
    lineMark_ = mark;
    isLineMarkWhole_ = true;
    if (mark) {
        const int line = std::clamp(mark->line, 1, editor_->lines()) - 1;
        editor_->Marks().MarkLine(line, mark->text, mark->kind);
    } else {
        editor_->Marks().ClearMark();
    }
    emit DocStatsChanged(DocStats());
}

void SourceWindow::ShowLine(int line) {
    editor_->ensureLineVisible(std::clamp(line, 1, editor_->lines()) - 1);
}

void SourceWindow::ShowBreakpoints(const std::vector<BreakpointMark>& breakpoints) {
    if (breakpoints == breakpoints_ && areBreakpointsWhole_) return;
    breakpoints_ = breakpoints;
    areBreakpointsWhole_ = true;
    editor_->Marks().ShowBreakpoints(breakpoints);
    emit DocStatsChanged(DocStats());
}

int SourceWindow::CaretLine() const {
    return editor_->CaretLine();
}

void SourceWindow::ShowMessageBeside() {
    Refresh();  // the messages may be new
    editor_->Marks().ShowBelow(editor_->CaretLine() - 1, MessageAtCursor());
}

bool SourceWindow::TakesEdits(const QWidget* focus) const {
    return focus == nullptr || focus == editor_ || editor_->isAncestorOf(focus);
}

QString SourceWindow::MessageAtCursor() const {
    return editor_->Marks().TextAt(editor_->CaretLine() - 1);
}

void SourceWindow::closeEvent(QCloseEvent* event) {
    emit FormClosing();
    QWidget::closeEvent(event);
}

void SourceWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) SetFormColours();
}

}  // namespace zentro
