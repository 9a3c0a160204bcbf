#include "ui/editor/source_window.h"

#include <QCloseEvent>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFontDatabase>
#include <QMdiSubWindow>
#include <QVBoxLayout>
#include <utility>

#include "compiler/paths.h"
#include "ui/editor/source_editor.h"
#include "desktop/text_file.h"
#include "ui/support/colours.h"
#include "ui/support/dialogs.h"
#include "ui/support/window_place.h"

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

SourceWindow::SourceWindow(Workbench& workbench, QWidget* parent)
    : QWidget(parent),
      workbench_(workbench),
      editor_(new SourceEditor(workbench.configuration, this)),
      lineEnd_(SystemLineEnd()) {
    setObjectName("frmSource");
    setFocusProxy(editor_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(editor_);
    SetColouring();
    SetFormColours();
    SetFont();
    connect(editor_, &SourceEditor::StatsChanged, this,
            [this] { emit DocStatsChanged(DocStats()); });
    connect(editor_, &SourceEditor::Edited, this, &SourceWindow::TextEdited);
    connect(editor_, &SourceEditor::FilesDropped, this, &SourceWindow::FilesDropped);
    connect(editor_, &QsciScintilla::modificationChanged, this, [this](bool changed) {
        setWindowModified(changed);
        emit SourceChangedChanged(changed);
    });
}

void SourceWindow::ShowTitle() {
    setWindowTitle(FileTitle() + "[*] (Source Code)");
    editor_->setAccessibleName("Source text of " + FileTitle());
    emit TitleChanged();
}

void SourceWindow::NewFile(int number) {
    folder_.clear();
    fileName_ = kNewFileName + QString::number(number);
    lineEnd_ = SystemLineEnd();
    editor_->LoadText({}, false);
    ShowTitle();
}

/// The text of a file. A failure is told to the user.
std::optional<FileText> SourceWindow::ReadSource(const QString& folder, const QString& fileName) {
    LoadedText loaded = LoadText(FilePath(folder, fileName));
    if (loaded.problem.empty()) return std::move(loaded.file);
    workbench_.dialogs.ShowMessage(
        this, "Error Loading Source File:\n" + QString::fromStdString(loaded.problem));
    return std::nullopt;
}

bool SourceWindow::LoadFile(const QString& folder, const QString& fileName) {
    std::optional<FileText> file = ReadSource(folder, fileName);
    if (!file) return false;
    folder_ = folder;
    fileName_ = fileName;
    lineEnd_ = file->lineEnd;
    editor_->LoadText(std::move(file->text), file->isLastLineEnded);
    ShowTitle();
    return true;
}

bool SourceWindow::Reload() {
    std::optional<FileText> file = ReadSource(folder_, fileName_);
    if (!file) return false;
    lineEnd_ = file->lineEnd;
    editor_->ReplaceText(std::move(file->text), file->isLastLineEnded);
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
    return IsNewFile() ? SaveFileAs() : WriteTo(folder_, fileName_);
}

QString SourceWindow::ChooseName() {
    const FileChoice choice{"Save Source File As",
                            TextSetting(workbench_.settings, SettingNumber::SourceFolder),
                            IsNewFile() ? QString() : fileName_, kSourceFilter, "txt"};
    QString path = workbench_.dialogs.ChooseFileToSave(this, choice).value_or(QString());
    if (path.isEmpty()) return {};
    if (!QFileInfo(path).fileName().contains('.')) path += ".txt";
    return path;
}

SaveResult SourceWindow::SaveFileAs() {
    const QString path = ChooseName();
    if (path.isEmpty()) return SaveResult::Cancelled;
    const QFileInfo chosen(path);
    const QString folder = QDir::toNativeSeparators(chosen.absolutePath());
    const SaveResult result = WriteTo(folder, chosen.fileName());
    if (result != SaveResult::Saved) return result;
    folder_ = folder;
    fileName_ = chosen.fileName();
    workbench_.settings.SaveSetting(SettingNumber::SourceFolder, folder.toStdString());
    ShowTitle();
    return result;
}

SaveResult SourceWindow::WriteTo(const QString& folder, const QString& fileName) {
    const std::string problem =
        SaveText(FilePath(folder, fileName), {editor_->TextBytes(), lineEnd_});
    if (!problem.empty()) {
        workbench_.dialogs.ShowMessage(
            this, "Could Not Save File. System returned the following error: \n" +
                      QString::fromStdString(problem));
        return SaveResult::Failed;
    }
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
void SourceWindow::ShowLine(int line) {
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
    QFont font(name);
    font.setStyleHint(QFont::Monospace);  // where the font is missing
    font.setPointSizeF(size);
    editor_->SetSourceFont(font);
}

void SourceWindow::SetColouring() {
    editor_->SetColouring(AsBoolean(workbench_.settings.GetSetting(SettingNumber::ColourSource)));
}

/// What moves on the screen: the window within a frame of child windows, when it is in one.
QWidget& SourceWindow::Frame() {
    auto* subWindow = qobject_cast<QMdiSubWindow*>(parentWidget());
    return subWindow != nullptr ? static_cast<QWidget&>(*subWindow) : *this;
}

void SourceWindow::PositionForm() {
    RestorePlace(Frame(), workbench_.settings, kSourceWindowPlace);
}

QString SourceWindow::Text() const {
    return editor_->text();
}

bool SourceWindow::SourceChanged() const {
    return editor_->isModified();
}

bool SourceWindow::IsNewFile() const {
    return fileName_.startsWith(kNewFileName);
}

QString SourceWindow::DocStats() const {
    return QString("Line %1/%2").arg(editor_->CaretLine()).arg(editor_->lines());
}

QString SourceWindow::WordAtCursor() const {
    return editor_->WordAtCaret();
}

void SourceWindow::SetText(const QString& text) {
    editor_->ReplaceText(FromFileBytes((text + '\n').toStdString()).text, false);
}

void SourceWindow::ShowMessages(const std::vector<LineMessage>& messages) {
    editor_->Marks().ShowMessages(messages);
}

void SourceWindow::ClearMessages() {
    editor_->Marks().ClearMessages();
}

void SourceWindow::MarkLine(int line, const QString& text) {
    const int index = std::clamp(line, 1, editor_->lines()) - 1;
    editor_->Marks().MarkLine(index, text);
}

void SourceWindow::ClearMark() {
    editor_->Marks().ClearMark();
}

QString SourceWindow::MessageAtCursor() const {
    return editor_->Marks().TextAt(editor_->CaretLine() - 1);
}

void SourceWindow::SetProgramNames(std::vector<ProgramName> names) {
    editor_->Typing().SetProgramNames(std::move(names));
}

void SourceWindow::closeEvent(QCloseEvent* event) {
    RememberPlace(Frame(), workbench_.settings, kSourceWindowPlace);
    emit FormClosing();
    QWidget::closeEvent(event);
}

void SourceWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) SetFormColours();
}

}  // namespace zentro
