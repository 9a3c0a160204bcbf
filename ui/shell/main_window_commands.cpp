// What each command of the menus does: one function for each menu.

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFileInfo>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPrinter>
#include <QTabBar>

#include "desktop/board_state.h"
#include "desktop/live_check.h"
#include "ui/dialogs/about_dialog.h"
#include "ui/dialogs/calculator.h"
#include "ui/dialogs/examples_dialog.h"
#include "ui/dialogs/find_dialog.h"
#include "ui/dialogs/help_browser.h"
#include "ui/dialogs/options_dialog.h"
#include "ui/editor/source_window.h"
#include "ui/output/compiler_output_window.h"
#include "ui/output/object_code_window.h"
#include "ui/shell/arrange_windows.h"
#include "ui/shell/board_windows.h"
#include "ui/shell/compile_commands.h"
#include "ui/shell/desk.h"
#include "ui/shell/editor_commands.h"
#include "ui/shell/follow_commands.h"
#include "ui/shell/main_window.h"
#include "ui/shell/notice_bar.h"
#include "ui/shell/print_source.h"
#include "ui/shell/recording_commands.h"
#include "ui/shell/recovery_keeper.h"
#include "ui/shell/send_commands.h"
#include "ui/shell/source_files.h"
#include "ui/support/dialogs.h"
#include "ui/terminal/terminal_window.h"

namespace zentro {

namespace {

FileChoice SourceChoice(const QString& title, const QString& folder) {
    FileChoice choice;
    choice.title = title;
    choice.folder = folder;
    choice.filters = kSourceFilter;
    choice.defaultSuffix = "txt";
    return choice;
}

}  // namespace

/// A command that works on the source window in front and does nothing without one.
void MainWindow::BindToSource(CommandId id, void (SourceWindow::*run)()) {
    handlers_[id] = [this, run] {
        if (SourceWindow* source = files_->Front()) (source->*run)();
    };
}

void MainWindow::BindFileCommands() {
    handlers_[CommandId::NewSource] = [this] { files_->NewFile(); };
    handlers_[CommandId::OpenSource] = [this] { OpenSource(); };
    handlers_[CommandId::GetFromWeb] = [this] {
        ShowHelp(Setting(SettingNumber::SourcesWebPage), {});
    };
    handlers_[CommandId::Save] = [this] { files_->SaveFront(); };
    handlers_[CommandId::SaveSourceAs] = [this] { files_->SaveFrontAs(); };
    handlers_[CommandId::SaveAll] = [this] { files_->SaveAll(); };
    handlers_[CommandId::CloseSource] = [this] { area_->closeActiveSubWindow(); };
    handlers_[CommandId::Recover] = [this] { recovery_->ShowCopies(this); };
    handlers_[CommandId::Print] = [this] { Print(); };
    handlers_[CommandId::Exit] = [this] { close(); };
}

void MainWindow::BindViewCommands() {
    handlers_[CommandId::Variables] = [this] { boards_->OpenVariables(); };
    handlers_[CommandId::Plot] = [this] { boards_->OpenPlot(); };
    handlers_[CommandId::Calculator] = [this] {
        if (calculator_ == nullptr) {
            calculator_ = new Calculator;
            area_->Add(calculator_);
        }
        BringToFront(calculator_);
    };
    BindToSource(CommandId::ZoomIn, &SourceWindow::ZoomIn);
    BindToSource(CommandId::ZoomOut, &SourceWindow::ZoomOut);
    BindToSource(CommandId::ResetZoom, &SourceWindow::ResetZoom);
    handlers_[CommandId::Options] = [this] { ShowOptions(); };
}

void MainWindow::BindEditCommands() {
    handlers_[CommandId::Undo] = [this] { EditFocused("undo", &SourceWindow::Undo); };
    handlers_[CommandId::Redo] = [this] { EditFocused("redo", &SourceWindow::Redo); };
    handlers_[CommandId::Cut] = [this] { EditFocused("cut", &SourceWindow::CutSelectedText); };
    handlers_[CommandId::Copy] = [this] { Copy(); };
    handlers_[CommandId::Paste] = [this] {
        EditFocused("paste", &SourceWindow::PasteSelectedText);
    };
    handlers_[CommandId::SelectAll] = [this] {
        EditFocused("selectAll", &SourceWindow::SelectAllText);
    };
    handlers_[CommandId::Find] = [this] { ShowFindDialog(false); };
    handlers_[CommandId::FindNext] = [this] { TellSearchResult(search_->FindNext()); };
    handlers_[CommandId::Replace] = [this] { ShowFindDialog(true); };
    handlers_[CommandId::Goto] = [this] { GotoLine(); };
    for (const CommandId id : EditorCommands::Ids())
        handlers_[id] = [this, id] { editing_->Run(id); };
}

void MainWindow::BindCompileCommands() {
    handlers_[CommandId::SyntaxCheck] = [this] { compiler_->SyntaxCheck(); };
    handlers_[CommandId::CompileSource] = [this] { compiler_->CompileSource(); };
    handlers_[CommandId::CheckWhileTyping] = [this] {
        checks_->SetLiveCheck(Action(CommandId::CheckWhileTyping)->isChecked());
    };
    handlers_[CommandId::ResetMain] = [this] { programs_->SetMain(std::nullopt); };
}

void MainWindow::BindKinetronCommands() {
    handlers_[CommandId::Run] = [this] { sending_->Run(); };
    handlers_[CommandId::Stop] = [this] { sending_->Stop(); };
    for (const CommandRow& row : Commands()) {
        if (FollowCommands::Knows(row.id))
            handlers_[row.id] = [this, id = row.id] { following_->Do(id); };
    }
    handlers_[CommandId::OpenComms] = [this] { boards_->OpenComms(); };
    handlers_[CommandId::OpenVirtualBoard] = [this] { boards_->OpenVirtualBoard(); };
    handlers_[CommandId::SaveRecording] = [this] { recordings_->Save(); };
    handlers_[CommandId::OpenRecording] = [this] { recordings_->Open(); };
    handlers_[CommandId::DownloadCurrent] = [this] { sending_->Download(); };
    handlers_[CommandId::DownloadSaved] = [this] { boards_->DownloadSaved(); };
    handlers_[CommandId::CancelDownload] = [this] { board_->CancelSending(); };
}

void MainWindow::BindWindowsCommands() {
    handlers_[CommandId::TileHorizontal] = [this] { TileWindows(*area_, Tiling::Horizontal); };
    handlers_[CommandId::TileVertical] = [this] { TileWindows(*area_, Tiling::Vertical); };
    handlers_[CommandId::Cascade] = [this] { area_->cascadeSubWindows(); };
    handlers_[CommandId::ArrangeAsWorkspace] = [this] { area_->ArrangeAsWorkspace(); };
    handlers_[CommandId::ArrangeIcons] = [this] { ArrangeMinimised(*area_); };
    handlers_[CommandId::NextWindow] = [this] { area_->ActivateNext(); };
}

void MainWindow::BindHelpCommands() {
    handlers_[CommandId::Help] = [this] { ShowHelp(HelpFile(), TopicInFront()); };
    handlers_[CommandId::FirstLesson] = [this] { ShowFirstLesson(); };
    handlers_[CommandId::Examples] = [this] { OpenExample(); };
    handlers_[CommandId::Cogwright] = [this] {
        ShowHelp(Setting(SettingNumber::MakerWebSite), {});
    };
    handlers_[CommandId::About] = [this] {
        AboutDialog dialog(workbench_.dialogs, this);
        workbench_.dialogs.Run(dialog);
    };
}

void MainWindow::OpenSource() {
    const std::optional<QString> path = workbench_.dialogs.ChooseFileToOpen(
        this, SourceChoice("Open Source File", Setting(SettingNumber::SourceFolder)));
    if (!path) return;
    const QString folder = QFileInfo(*path).absolutePath();
    workbench_.settings.SaveSetting(SettingNumber::SourceFolder,
                                    (folder + QDir::separator()).toStdString());
    OpenPath(*path);
}

void MainWindow::OpenExample() {
    const QString folder = workbench_.ExamplesFolder();
    ExamplesDialog dialog(ExamplesIn(folder), this);
    if (!workbench_.dialogs.Run(dialog)) return;
    if (!dialog.Chosen().isEmpty()) return OpenPath(dialog.Chosen());
    const std::optional<QString> path =
        workbench_.dialogs.ChooseFileToOpen(this, SourceChoice("Example Programs", folder));
    if (path) OpenPath(*path);
}

/// Opens a file, or says that it is open already.
void MainWindow::OpenPath(const QString& path) {
    const QFileInfo file(path);
    if (SourceWindow* open = files_->Find(path)) {
        BringToFront(open);
        constexpr MessageCode kCode = MessageCode::AlreadyOpen;
        const ErrorMessage* message = workbench_.configuration.messages.Find(kCode);
        const std::string text = message == nullptr
                                     ? TextNotFound(kCode)
                                     : MessageCodeText(kCode) + ":" + message->errorMsg;
        return workbench_.dialogs.ShowMessage(
            this, QString::fromStdString(text) + "\r\n\r\n" + file.fileName());
    }
    files_->OpenFile(file.absolutePath(), file.fileName());
}

void MainWindow::Print() {
    const SourceWindow* source = files_->Front();
    if (source == nullptr) return;
    QPrinter printer(QPrinter::HighResolution);
    if (workbench_.dialogs.SetUpPrinter(this, printer))
        PrintSource(source->FileTitle(), source->Text(), workbench_.settings, printer);
}

/// A text box that has the focus takes the command itself; otherwise it is the source window's.
void MainWindow::EditFocused(const char* slot, void (SourceWindow::*run)()) {
    QWidget* focus = QApplication::focusWidget();
    SourceWindow* source = files_->Front();
    const bool isInSource = source != nullptr && source->TakesEdits(focus);
    if (isInSource) return (source->*run)();
    if (focus != nullptr && focus->metaObject()->indexOfSlot(QByteArray(slot) + "()") >= 0) {
        QMetaObject::invokeMethod(focus, slot);
    } else if (source != nullptr) {
        (source->*run)();
    }
}

void MainWindow::Copy() {
    QWidget* front = Front();
    if (auto* terminal = qobject_cast<TerminalWindow*>(front)) {
        const QString text = terminal->CopySelectedText();
        if (!text.isEmpty()) QApplication::clipboard()->setText(text);
    } else if (auto* text = qobject_cast<CompilerTextWindow*>(front)) {
        text->CopySelectedText();
    } else {
        EditFocused("copy", &SourceWindow::CopySelectedText);
    }
}

void MainWindow::ShowFindDialog(bool replaces) {
    if (findDialog_ == nullptr) {
        findDialog_ = new FindDialog(this);
        connect(findDialog_, &FindDialog::FindText, this,
                [this](const QString& text, FindOptions options, bool allFiles, bool newSearch) {
                    TellSearchResult(search_->FindText(text, options, allFiles, newSearch));
                });
        connect(findDialog_, &FindDialog::ReplaceText, this,
                [this](const QString& text, const QString& replacement, FindOptions options,
                       bool allFiles) {
                    TellSearchResult(search_->ReplaceText(text, replacement, options, allFiles));
                });
        connect(findDialog_, &FindDialog::ReplaceAllText, this,
                [this](const QString& text, const QString& replacement, FindOptions options,
                       bool allFiles) {
                    const int count = search_->ReplaceAll(text, replacement, options, allFiles);
                    workbench_.dialogs.ShowMessage(findDialog_, ReplacedText(text, count));
                });
    }
    if (replaces) {
        findDialog_->ShowReplace();
    } else {
        findDialog_->ShowFind();
    }
}

void MainWindow::TellSearchResult(SearchResult result) {
    // Without a text there is something to ask first.
    if (result == SearchResult::NothingToFind) return ShowFindDialog(false);
    const QString text = SearchResultText(result);
    const bool isToolInFront = findDialog_ != nullptr && findDialog_->isActiveWindow();
    QWidget* parent = isToolInFront ? static_cast<QWidget*>(findDialog_) : this;
    if (!text.isEmpty()) workbench_.dialogs.ShowMessage(parent, text);
}

void MainWindow::GotoLine() {
    SourceWindow* source = files_->Front();
    if (source == nullptr) return;
    const std::optional<QString> answer =
        workbench_.dialogs.AskText(this, "Line number to go to?", "1");
    bool isNumber = false;
    const int line = answer ? answer->trimmed().toInt(&isNumber) : 0;
    if (isNumber) source->GotoLine(line);
}

void MainWindow::ShowOptions() {
    OptionsDialog dialog(workbench_, listPorts_, this);
    if (workbench_.dialogs.Run(dialog)) ApplySettings();
}

void MainWindow::ApplySettings() {
    for (SourceWindow* window : files_->Windows()) {
        window->SetFont();
        window->SetFormColours();
    }
    ShowWebCommands();
    compiler_->ApplySettings();
    boards_->ApplySettings();
    checks_->ReadSetting();
    Action(CommandId::CheckWhileTyping)->setChecked(checks_->IsOn());
}

/// A command that shows a web page is there when the page is known.
void MainWindow::ShowWebCommands() {
    Action(CommandId::GetFromWeb)->setVisible(!Setting(SettingNumber::SourcesWebPage).isEmpty());
    Action(CommandId::Cogwright)->setVisible(!Setting(SettingNumber::MakerWebSite).isEmpty());
}

QString MainWindow::HelpFile() {
    if (Setting(SettingNumber::HelpFile).isEmpty()) {
        workbench_.settings.SaveSetting(SettingNumber::HelpFile,
                                        (workbench_.programFolder / "ZentroCodeHelp.htm").string());
    }
    return Setting(SettingNumber::HelpFile);
}

/// One reads the lesson while one types.
void MainWindow::ShowFirstLesson() {
    const bool hasEmpty = files_->Front() != nullptr && files_->Front()->Text().isEmpty();
    if (!hasEmpty) Action(CommandId::NewSource)->trigger();
    ShowHelp(HelpFile(), {"", {"the-first-lesson"}});
    BackToSource();
}

HelpTopic MainWindow::TopicInFront() const {
    if (const auto* source = qobject_cast<SourceWindow*>(Front())) return source->TopicAtCursor();
    const auto* output = qobject_cast<CompilerOutputWindow*>(Front());
    return output == nullptr ? HelpTopic{} : output->TopicAtCursor();
}

void MainWindow::ShowHelp(const QString& address, const HelpTopic& topic) {
    if (browser_ == nullptr) {
        browser_ = new HelpBrowser(workbench_.dialogs, *workbench_.disk);
        area_->Add(browser_);
    }
    BringToFront(browser_);
    browser_->ShowTopic(address, topic);
}

}  // namespace zentro
