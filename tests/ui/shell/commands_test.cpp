#include <QAbstractButton>
#include <QAction>
#include <QClipboard>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTextBrowser>
#include <QToolBar>
#include <QTreeWidget>
#include <filesystem>
#include <set>
#include <stdexcept>

#include "desktop/example_programs.h"
#include "tests/ui/shell/main_window_fixture.h"
#include "ui/editor/source_editor.h"
#include "ui/editor/source_window.h"
#include "ui/shell/arrange_windows.h"
#include "ui/shell/board_windows.h"
#include "ui/shell/compile_commands.h"
#include "ui/shell/print_source.h"
#include "ui/shell/source_files.h"
#include "ui/shell/start_up.h"

namespace zentro {

class CommandsTest : public MainWindowTest {};

TEST_F(CommandsTest, TheTableIsWhatTheMenusAndToolBarsShow) {
    std::set<QString> shortcuts;
    std::set<QString> names;
    for (const CommandRow& row : Commands()) {
        EXPECT_TRUE(names.insert(row.name).second) << row.name;
        if (*row.shortcut != '\0') {
            EXPECT_TRUE(shortcuts.insert(row.shortcut).second) << row.shortcut;
            EXPECT_FALSE(window->Action(row.id)->shortcut().isEmpty()) << row.shortcut;
        }
        if (*row.icon != '\0') {
            EXPECT_FALSE(window->Action(row.id)->icon().isNull()) << row.icon;
        }
    }
    QStringList captions;
    for (const QAction* menu : window->menuBar()->actions()) {
        captions += menu->text();
    }
    EXPECT_EQ(captions.mid(0, 4), QStringList({"&File", "&View", "&Edit", "&Compile"}));
    for (const char* key :
         {"File_New", "File_Open", "File_Save", "File_SaveAll", "File_Print", "Copy", "Cut",
          "Paste", "Find", "SyntaxCheck", "Compile", "Kinetron", "Download"}) {
        EXPECT_NE(window->findChild<QWidget*>(key), nullptr) << key;
    }
}

TEST_F(CommandsTest, TheEditCommandsWorkOnTheWindowInFront) {
    // The keys of the disabled commands still say why.
    QTest::keyClick(window.get(), Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(LastShown(), "Nothing to Save!");
    QTest::keyClick(window.get(), Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(dialogs.shown.size(), 2);
    Press(CommandId::NewSource);
    Press(CommandId::Save);
    EXPECT_EQ(LastShown(), "File Save Cancelled as requested");
    Press(CommandId::SaveSourceAs);
    EXPECT_EQ(LastShown(), "File Save As Cancelled as requested");
    Type("alpha beta");
    QApplication::processEvents();
    EXPECT_EQ(Child<QLabel>("panelChanged")->text(), "Changed");
    Press(CommandId::SelectAll);
    Press(CommandId::Copy);
    EXPECT_EQ(QApplication::clipboard()->text(), "alpha beta");
    Press(CommandId::Cut);
    EXPECT_EQ(FrontSource()->Text(), "");
    Press(CommandId::Paste);
    Press(CommandId::Paste);
    EXPECT_EQ(FrontSource()->Text(), "alpha betaalpha beta");
    Press(CommandId::Undo);
    Press(CommandId::Undo);
    Press(CommandId::Redo);
    EXPECT_EQ(FrontSource()->Text(), "alpha beta");
    dialogs.text = "1";
    Press(CommandId::Goto);
    EXPECT_EQ(dialogs.questions.last(), "Line number to go to?");
    Press(CommandId::Copy);
    EXPECT_EQ(QApplication::clipboard()->text(), "alpha beta");
    for (CommandId id : {CommandId::ZoomIn, CommandId::ZoomOut, CommandId::ResetZoom}) {
        Press(id);
    }
    Press(CommandId::SyntaxCheck);  // the name for the new file is not given
    EXPECT_EQ(LastShown(), "Compile Cancelled");
}

TEST_F(CommandsTest, CommandsAreDisabledWhileTheyCanDoNothing) {
    QApplication::clipboard()->clear();
    using enum CommandId;
    const std::vector<CommandId> ofInterest{Save, SaveSourceAs, SaveAll,   CloseSource, Print,
                                            Undo, Redo,         Cut,       Copy,        Paste,
                                            Find, Goto,         SelectAll, ResetMain};
    const auto enabled = [&] {
        std::vector<CommandId> found;
        for (const CommandId id : ofInterest) {
            if (window->Action(id)->isEnabled()) found.push_back(id);
        }
        return found;
    };
    struct Step {
        const char* what;
        std::function<void()> act;
        std::vector<CommandId> enabled;
    };
    const std::vector<Step> steps{
        {"an empty program", [] {}, {}},
        {"a new text",
         [&] { Press(NewSource); },
         {Save, SaveSourceAs, SaveAll, CloseSource, Print, Find, Goto, SelectAll}},
        {"typed",
         [&] { Type("ab"); },
         {Save, SaveSourceAs, SaveAll, CloseSource, Print, Undo, Find, Goto, SelectAll}},
        {"selected",
         [&] { Press(SelectAll); },
         {Save, SaveSourceAs, SaveAll, CloseSource, Print, Undo, Cut, Copy, Find, Goto, SelectAll}},
        {"copied",
         [&] { Press(Copy); },
         {Save, SaveSourceAs, SaveAll, CloseSource, Print, Undo, Cut, Copy, Paste, Find, Goto,
          SelectAll}},
        {"taken back",
         [&] { Press(Undo); },
         {Save, SaveSourceAs, SaveAll, CloseSource, Print, Redo, Paste, Find, Goto, SelectAll}},
        {"saved",
         [&] {
             dialogs.fileToSave = FilePath("a.txt");
             Press(Save);
         },
         {SaveSourceAs, CloseSource, Print, Redo, Paste, Find, Goto, SelectAll}},
        {"the file to compile",
         [&] { ChooseMain(0); },
         {SaveSourceAs, CloseSource, Print, Redo, Paste, Find, Goto, SelectAll, ResetMain}},
        {"the output in front",
         [&] {
             Press(SyntaxCheck);
             auto* output = Child<QPlainTextEdit>("txtOutput");
             output->setFocus();
             output->moveCursor(QTextCursor::End);
         },
         {SaveSourceAs, CloseSource, Print, Find, Goto, SelectAll, ResetMain}},
        {"some of it selected",
         [&] { Child<QPlainTextEdit>("txtOutput")->selectAll(); },
         {SaveSourceAs, CloseSource, Print, Copy, Find, Goto, SelectAll, ResetMain}},
        {"closed",
         [&] {
             Press(CloseSource);
             Press(CloseSource);
         },
         {}},
    };
    for (const Step& step : steps) {
        step.act();
        EXPECT_TRUE(QTest::qWaitFor([&] { return enabled() == step.enabled; }, 1000)) << step.what;
        EXPECT_EQ(enabled(), step.enabled);
    }
}

TEST_F(CommandsTest, FilesAreOpenedOnceAndSearchedToTheirEnd) {
    WriteFile("prog.txt", "BEGIN PROGRAM\nEND PROGRAM\n");
    dialogs.fileToOpen = FilePath("prog.txt");
    Press(CommandId::OpenSource);
    EXPECT_EQ(dialogs.lastChoice.filters, "Source (Text) Files|*.txt");
    Press(CommandId::OpenSource);
    EXPECT_TRUE(LastShown().startsWith("E3002:")) << LastShown().toStdString();
    EXPECT_TRUE(LastShown().endsWith("prog.txt"));
    EXPECT_EQ(window->Files().Windows().size(), 1);
    EXPECT_EQ(Child<QTabBar>("TabStripFiles")->count(), 1);
    Press(CommandId::Replace);
    auto* find = Child<QDialog>("frmFind");
    find->findChild<QLineEdit*>("TxtToFind")->setText("program");
    find->findChild<QAbstractButton*>("BtnFind")->click();
    Press(CommandId::FindNext);
    EXPECT_EQ(FrontSource()->DocStats(), "Line 2/2");
    Press(CommandId::FindNext);
    EXPECT_EQ(LastShown(), "End of File. Search again to restart");
    find->close();
    // A file that is gone is said to be so, and nothing opens.
    dialogs.fileToOpen = FilePath("missing.txt");
    Press(CommandId::OpenSource);
    EXPECT_TRUE(LastShown().startsWith("Error Loading Source File:")) << LastShown().toStdString();
    EXPECT_EQ(window->Files().Windows().size(), 1);
}

TEST_F(CommandsTest, DownloadsAreRefusedUntilThereIsSomethingToSend) {
    for (CommandId id : {CommandId::DownloadCurrent, CommandId::DownloadSaved}) {
        EXPECT_FALSE(window->Action(id)->isEnabled());
    }
    Press(CommandId::OpenVirtualBoard);
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return window->Action(CommandId::DownloadCurrent)->isEnabled(); }));
    Press(CommandId::DownloadCurrent);
    EXPECT_EQ(LastShown(), "Nothing Compiled to Download!");
    Write("some.txt", "BEGIN PROGRAM\nEND PROGRAM\n");
    ChooseMain(0);
    Press(CommandId::DownloadCurrent);
    EXPECT_EQ(LastShown(),
              "Please use the download saved when you have no source file open and compiled");
    Press(CommandId::Variables);
    EXPECT_EQ(LastShown(), "No Variable Information found. Have you compiled the program?");
    // A port that is not there: its message, and no terminal stays.
    window->close();
    settings->SaveSetting(SettingNumber::SerialPort, std::string("/dev/no-such-port"));
    Start();
    Press(CommandId::OpenComms);
    EXPECT_TRUE(LastShown().startsWith(
        "Failed to open '/dev/no-such-port' - Specified port was not found"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return Child("frmTerminal") == nullptr; }));
    EXPECT_FALSE(window->Action(CommandId::DownloadCurrent)->isEnabled());
}

TEST_F(CommandsTest, NothingIsSentWithoutAConnection) {
    const QString noConnection =
        "Please open a connection to the kinetron before attempting a download.";
    Write("some.txt", "BEGIN PROGRAM\nEND PROGRAM\n");
    Press(CommandId::CompileSource);
    window->Boards().DownloadCurrent();
    EXPECT_EQ(LastShown(), noConnection);
    dialogs.shown.clear();
    dialogs.fileToOpen = FilePath("some.obj");
    window->Boards().DownloadSaved();
    EXPECT_EQ(LastShown(), noConnection);
    EXPECT_EQ(dialogs.lastChoice.filters,
              "ZentroCompiler Code Files (*.obj)|*.obj|Ordino Files (*.odn)|*.odn");
}

TEST_F(CommandsTest, WhatIsWrongWithTheLanguageIsToldWhenItIsLoaded) {
    const QByteArray whole = ReadFile("ZentroCompiler.cfg");
    const QByteArray record =
        "\"E3002\",\"This file is already open. Its tab is in the main window.\"";
    ASSERT_TRUE(whole.contains(record));
    struct Row {
        QByteArray file;
        QString told;  ///< empty: nothing
    };
    const Row rows[] = {{whole, ""},
                        {QByteArray(whole).replace(record, "\"E9302\",\"x\""), "E3002"},
                        {"", "ZentroCompiler.cfg"}};
    for (const Row& row : rows) {
        WriteFile("ZentroCompiler.cfg", row.file);
        dialogs.shown.clear();
        InstructionConfiguration loaded;
        LoadLanguage(PathOf("ZentroCompiler.cfg"), loaded, dialogs);
        ASSERT_EQ(dialogs.shown.size(), row.told.isEmpty() ? 0 : 1);
        if (row.told.isEmpty()) continue;
        EXPECT_TRUE(LastShown().startsWith(FilePath("ZentroCompiler.cfg") + ": "))
            << LastShown().toStdString();
        EXPECT_TRUE(LastShown().contains(row.told)) << LastShown().toStdString();
        EXPECT_TRUE(LastShown().contains("Choose it in the options")) << "what one can do";
    }
}

TEST_F(CommandsTest, AnExampleIsChosenByItsPictureAndItsSentence) {
    workbench->programFolder = std::filesystem::path(ZENTRO_EXAMPLES_FOLDER).parent_path();
    dialogs.run = [&](QDialog& dialog) {
        dialog.show();
        auto* list = dialog.findChild<QTreeWidget*>("ExampleList");
        EXPECT_GT(list->topLevelItemCount(), 10);
        for (int i = 0; i < list->topLevelItemCount(); ++i) {
            const QTreeWidgetItem& item = *list->topLevelItem(i);
            EXPECT_FALSE(item.icon(0).isNull());
            const QString sentence = item.text(1);
            EXPECT_TRUE(sentence.endsWith('.') && sentence[0].isUpper())
                << item.text(0).toStdString() << ": " << sentence.toStdString();
        }
        EXPECT_EQ(list->topLevelItem(0)->text(1),
                  "The two LEDs take turns, twice a second, until you stop the board.");
        QTest::keyClicks(dialog.focusWidget(), "par");
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
        return dialog.result() == QDialog::Accepted;
    };
    Press(CommandId::Examples);
    ASSERT_NE(FrontSource(), nullptr);
    EXPECT_TRUE(FrontSource()->Text().startsWith("; Parking\n"));
    dialogs.run = [](QDialog& dialog) {
        dialog.findChild<QPushButton*>("BtnSelectFromDisk")->click();
        return dialog.result() == QDialog::Accepted;
    };
    Press(CommandId::Examples);
    EXPECT_EQ(dialogs.lastChoice.title, "Example Programs");
    EXPECT_EQ(FirstSentence("DEFINE BYTE A\n; no head\n"), "");
    EXPECT_EQ(FirstSentence("; Title\n;\n; No full stop\n; here\nBEGIN PROGRAM"),
              "No full stop here");
}

TEST_F(CommandsTest, TheProgramTakesNoArgumentsAndTellsWhatItDidNotExpect) {
    EXPECT_EQ(RunDesktop({"zentro", "prog.txt"}, dialogs), 1);
    EXPECT_EQ(LastShown(),
              "App started with command line args, but this feature is not implemented yet");
    EXPECT_EQ(RunTellingFailures(dialogs, [] { return 7; }), 7);
    EXPECT_EQ(
        RunTellingFailures(dialogs, []() -> int { throw std::runtime_error("no more room"); }), 1);
    EXPECT_EQ(LastShown(), "Internal Error has ocurred:\n\nno more room");
}

TEST_F(CommandsTest, AProgramWithErrorsHasNoListing) {
    SourceWindow* source = Write("bad.txt", "BEGIN PROGRAM\n    WAIT Later\nEND PROGRAM\n");
    Press(CommandId::CompileSource);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Child("frmObjectCode") == nullptr; }));
    EXPECT_NE(Child("frmCompilerOutput"), nullptr);
    source->SetText("BEGIN PROGRAM\n    WAIT 5\nEND PROGRAM\n");
    Press(CommandId::CompileSource);
    EXPECT_NE(Child("frmObjectCode"), nullptr);
}

TEST_F(CommandsTest, WindowsAreArrangedListedAndClosed) {
    Write("a.txt", "; a\n");
    Write("b.txt", "; b\n");
    Press(CommandId::Calculator);
    auto* area = window->findChild<QMdiArea*>();
    for (CommandId id : {CommandId::TileHorizontal, CommandId::TileVertical, CommandId::Cascade}) {
        Press(id);
        for (const QMdiSubWindow* frame : area->subWindowList()) {
            EXPECT_TRUE(area->viewport()->rect().intersects(frame->geometry()));
        }
    }
    area->subWindowList().first()->showMinimized();
    Press(CommandId::ArrangeIcons);
    EXPECT_EQ(area->subWindowList().first()->geometry().bottom(),
              area->viewport()->rect().bottom());
    EXPECT_EQ(Tile({0, 0, 100, 90}, 3, Tiling::Horizontal)[2], QRect(0, 60, 100, 30));
    EXPECT_EQ(Tile({0, 0, 100, 90}, 3, Tiling::Vertical)[1], QRect(33, 0, 33, 90));

    QMenu* menu = window->menuBar()->actions()[5]->menu();
    emit menu->aboutToShow();
    EXPECT_EQ(menu->actions().last()->text(), "&3 " + area->subWindowList().last()->windowTitle());
    Press(CommandId::NextWindow);
    const qsizetype open = area->subWindowList().size();
    Press(CommandId::CloseSource);
    EXPECT_TRUE(QTest::qWaitFor([&] { return area->subWindowList().size() == open - 1; }));
}

TEST_F(CommandsTest, EscapeLeadsBackToTheText) {
    settings->SaveSetting(SettingNumber::HelpFile, ZENTRO_HANDBOOK);
    Write("mine.txt", "BEGIN PROGRAM\nEND PROGRAM\n");
    for (const CommandId away :
         {CommandId::Help, CommandId::OpenVirtualBoard, CommandId::CompileSource}) {
        Press(away);
        for (QMdiSubWindow* frame : window->findChild<QMdiArea*>()->subWindowList()) {
            if (qobject_cast<SourceWindow*>(frame->widget()) != nullptr) continue;
            if (frame->widget()->objectName() == "frmTerminal") continue;  // boards get its keys
            window->findChild<QMdiArea*>()->setActiveSubWindow(frame);
            frame->widget()->setFocus();
            ASSERT_FALSE(FrontSource()->isAncestorOf(QApplication::focusWidget()));
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
            EXPECT_TRUE(FrontSource()->isAncestorOf(QApplication::focusWidget()))
                << frame->widget()->objectName().toStdString();
        }
    }
}

/// Not to the window that happens to have been opened first or last.
TEST_F(CommandsTest, WhoClosesAWindowGoesOnWhereTheyWere) {
    settings->SaveSetting(SettingNumber::HelpFile, ZENTRO_HANDBOOK);
    SourceWindow* mine = Write("mine.txt", "BEGIN PROGRAM\nEND PROGRAM\n");
    Press(CommandId::OpenVirtualBoard);
    Write("other.txt", "BEGIN PROGRAM\nEND PROGRAM\n");
    for (const bool byKey : {true, false}) {
        window->Files().BringToFront(mine->Id());
        Press(CommandId::Help);
        ASSERT_TRUE(QTest::qWaitFor([&] {
            return Child("frmBrowser") != nullptr &&
                   Child("frmBrowser")->isAncestorOf(QApplication::focusWidget());
        }));
        if (byKey) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_W, Qt::ControlModifier);
        } else {
            Child("frmBrowser")->parentWidget()->close();
        }
        ASSERT_TRUE(QTest::qWaitFor([&] { return Child("frmBrowser") == nullptr; }));
        EXPECT_EQ(FrontSource(), mine);
        EXPECT_TRUE(mine->isAncestorOf(QApplication::focusWidget())) << "one types on";
    }
}

TEST_F(CommandsTest, TheMakersPagesAreShownInTheHelpBrowser) {
    EXPECT_FALSE(window->Action(CommandId::Cogwright)->isVisible()) << "no page is known yet";
    EXPECT_FALSE(window->Action(CommandId::GetFromWeb)->isVisible());
    WriteFile("maker.htm", "<title>The maker</title><p>Welcome</p>");
    settings->SaveSetting(SettingNumber::MakerWebSite, PathOf("maker.htm"));
    WriteFile("sources.htm", "<title>Programs</title><p>Many of them</p>");
    settings->SaveSetting(SettingNumber::SourcesWebPage, PathOf("sources.htm"));
    dialogs.run = [](QDialog& dialog) {
        QTest::mouseClick(dialog.findChild<QAbstractButton*>("cmdOK"), Qt::LeftButton);
        return true;
    };
    Press(CommandId::Options);
    EXPECT_TRUE(window->Action(CommandId::Cogwright)->isVisible());
    EXPECT_TRUE(window->Action(CommandId::GetFromWeb)->isVisible());
    Press(CommandId::Cogwright);
    ASSERT_NE(Child("frmBrowser"), nullptr);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Child("frmBrowser")->windowTitle() == "The maker"; }));
    Press(CommandId::GetFromWeb);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Child("frmBrowser")->windowTitle() == "Programs"; }));
    Press(CommandId::Exit);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(CommandsTest, HelpOpensAtWhatIsInFront) {
    WriteFile("book.htm",
              "<title>Book</title><p>Contents</p><p><a name='SET MOTOR'></a>motors</p>"
              "<p><a name='E33'></a>a sign too many</p>");
    settings->SaveSetting(SettingNumber::HelpFile, PathOf("book.htm"));
    const auto place = [&] {
        auto* book = Child("frmBrowser");
        EXPECT_TRUE(QTest::qWaitFor([&] { return book->windowTitle() == "Book"; }));
        return book->findChild<QTextBrowser*>()->source().fragment(QUrl::FullyDecoded);
    };
    SourceWindow* source = Write("a.txt",
                                 "DEFINE BYTE Speed = 1\nBEGIN PROGRAM\n"
                                 "SET MOTOR 1, FORWARD, Speed\nSpeed = -1\nEND PROGRAM\n");
    source->GotoLine(3);
    QTest::keyClick(source->Editor(), Qt::Key_Home);
    Press(CommandId::Help);
    EXPECT_EQ(place(), "SET MOTOR");

    Press(CommandId::CompileSource);
    auto* output = Child<QPlainTextEdit>("txtOutput");
    output->setFocus();
    QTest::keyClick(output, Qt::Key_F4);  // shows the line in the source
    auto* area = window->findChild<QMdiArea*>();
    area->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(output->parentWidget()->parentWidget()));
    output->setFocus();
    Press(CommandId::Help);
    EXPECT_EQ(place(), "E33");

    // In the book its own search has the keys, wherever the focus is.
    auto* field = Child("frmBrowser")->findChild<QLineEdit*>("txtSearch");
    auto* page = Child("frmBrowser")->findChild<QTextBrowser*>();
    page->setFocus();
    Press(CommandId::Find);
    EXPECT_EQ(QApplication::focusWidget(), field);
    QTest::keyClicks(field, "o");
    Press(CommandId::FindNext);
    Press(CommandId::FindNext);
    EXPECT_EQ(Child("frmBrowser")->findChild<QLabel*>("lblMatches")->text().left(6), "2 of 5");
    EXPECT_EQ(Child("frmFind"), nullptr);
    EXPECT_TRUE(dialogs.shown.isEmpty());

    source->Editor()->setFocus();
    source->GotoLine(4);
    QTest::keyClick(source->Editor(), Qt::Key_Home);
    Press(CommandId::Help);
    EXPECT_EQ(place(), "E33") << "a mistake in the line comes before its words";
    source->SetText("DEFINE BYTE Speed = 0\nBEGIN PROGRAM\nSpeed = 1\nEND PROGRAM\n");
    source->Editor()->setFocus();
    source->GotoLine(3);
    QTest::keyClick(source->Editor(), Qt::Key_Home);
    Press(CommandId::Help);
    EXPECT_EQ(place(), "");
    EXPECT_EQ(field->selectedText(), "Speed");
    EXPECT_EQ(QApplication::focusWidget(), field);
}

TEST_F(CommandsTest, ClosingAChangedFileAsks) {
    Write("a.txt", "; a\n")->SetText("; b\n");
    dialogs.yesNoAnswer = YesNoAnswer::Yes;
    Press(CommandId::CloseSource);
    EXPECT_EQ(dialogs.questions.last(), "Source File has changed. Save changes?\n\na.txt");
    EXPECT_TRUE(ReadFile("a.txt").startsWith("; b"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return window->Files().Windows().isEmpty(); }));
    EXPECT_EQ(Child<QTabBar>("TabStripFiles")->count(), 0);
}

TEST_F(CommandsTest, TheCrossOfATabAsksOnceAndEscapeKeepsTheText) {
    Write("a.txt", "; a\n");
    FrontSource()->SetText("; typed\n");
    auto* tabs = Child<QTabBar>("TabStripFiles");
    dialogs.yesNoAnswer = YesNoAnswer::Neither;
    dialogs.questions.clear();
    emit tabs->tabCloseRequested(0);
    QTest::qWait(20);
    EXPECT_EQ(dialogs.questions.size(), 1);
    ASSERT_EQ(tabs->count(), 1);
    EXPECT_EQ(FrontSource()->Text().trimmed(), "; typed");
    dialogs.yesNoAnswer = YesNoAnswer::No;
    emit tabs->tabCloseRequested(0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return tabs->count() == 0; }));
    EXPECT_EQ(dialogs.questions.size(), 2);
}

// Whoever answers a notice goes on in the file that was in front.
TEST_F(CommandsTest, ANoticeLeavesTheFileInFrontInFront) {
    Write("a.txt", "BEGIN PROGRAM\nEND PROGRAM\n");
    Write("b.txt", "BEGIN PROGRAM\nEND PROGRAM\n");
    ChooseMain(0);
    Press(CommandId::CompileSource);
    ASSERT_TRUE(Child("noticeBar")->isVisible());
    for (const bool byKeyboard : {false, true}) {
        Child<QTabBar>("TabStripFiles")->setCurrentIndex(1);
        if (byKeyboard) Press(CommandId::CompileSource);
        auto* dismiss = Child<QAbstractButton>("noticeDismiss");
        if (byKeyboard) {
            dismiss->setFocus();
            QTest::keyClick(dismiss, Qt::Key_Space);
        } else {
            QTest::mouseClick(dismiss, Qt::LeftButton);
        }
        QTest::qWait(20);
        EXPECT_FALSE(Child("noticeBar")->isVisible());
        EXPECT_EQ(FrontSource()->FileName(), "b.txt");
    }
}

// What a screen reader says of a tab.
TEST_F(CommandsTest, TheNameOfATabFollowsItsFile) {
    Press(CommandId::NewSource);
    auto* tabs = Child<QTabBar>("TabStripFiles");
    EXPECT_EQ(tabs->accessibleTabName(0), "NewFile1");
    Type("x");
    QApplication::processEvents();
    EXPECT_EQ(tabs->accessibleTabName(0), "NewFile1, changed");
    ChooseMain(0);
    dialogs.fileToSave = FilePath("first.txt");
    Press(CommandId::Save);
    EXPECT_EQ(tabs->accessibleTabName(0), "first.txt, the file to compile");
}

TEST_F(CommandsTest, ARightClickOnATabChoosesTheFileToCompile) {
    Write("a.txt", "BEGIN PROGRAM\nEND PROGRAM\n");
    Write("b.txt", "BEGIN PROGRAM\nEND PROGRAM\n");
    auto* tabs = Child<QTabBar>("TabStripFiles");
    QTest::mouseClick(tabs, Qt::RightButton, {}, tabs->tabRect(0).center());
    EXPECT_EQ(window->OpenPrograms().Main()->name, "a.txt");
    EXPECT_FALSE(tabs->tabIcon(0).isNull());
    EXPECT_TRUE(tabs->tabIcon(1).isNull());
    EXPECT_EQ(FrontSource()->FileName(), "a.txt");
    Press(CommandId::CompileSource);
    EXPECT_FALSE(ReadFile("a.obj").isEmpty());
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(1).center());
    EXPECT_EQ(FrontSource()->FileName(), "b.txt");
}

TEST_F(CommandsTest, ToolBarRowsAndPlacesAreRemembered) {
    auto* bar = Child<QToolBar>("ToolbarText");
    window->insertToolBarBreak(bar);
    window->resize(900, 650);
    window->close();
    EXPECT_TRUE(AsBoolean(settings->GetSetting(SettingNumber::ToolBarLayout, "Saved")));
    EXPECT_TRUE(
        AsBoolean(settings->GetSetting(SettingNumber::ToolBarLayout, "ToolbarText.NewRow")));
    Start();
    EXPECT_TRUE(window->toolBarBreak(Child<QToolBar>("ToolbarText")));
    EXPECT_FALSE(window->toolBarBreak(Child<QToolBar>("ToolbarCompile")));
}

TEST_F(CommandsTest, PrintsTheHeaderOnceAndTheTextForEachCopy) {
    EXPECT_EQ(PrintedText("a.txt", "; x\n", 2),
              "\n** ZentroCompiler II File - a.txt **\n; x\n; x\n");
    Write("a.txt", "; x\n");
    Press(CommandId::Print);  // cancelled
    dialogs.printToFile = FilePath("out.pdf");
    dialogs.copies = 2;
    Press(CommandId::Print);
    EXPECT_TRUE(ReadFile("out.pdf").startsWith("%PDF"));
}

TEST_F(CommandsTest, TheSmallToolsOpen) {
    Press(CommandId::Calculator);
    QTest::keyClicks(QApplication::focusWidget(), "255");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    const auto* results = Child("frmCalc")->findChild<QPlainTextEdit*>();
    EXPECT_TRUE(results->toPlainText().contains("Dec to Hex: FF"))
        << results->toPlainText().toStdString();
    Press(CommandId::Help);
    EXPECT_NE(Child("frmBrowser"), nullptr);
    QStringList opened;
    dialogs.run = [&](QDialog& dialog) {
        opened += dialog.objectName();
        return false;
    };
    Press(CommandId::Options);
    Press(CommandId::About);
    EXPECT_EQ(opened, QStringList({"frmOptions", "frmAbout"}));
    Press(CommandId::Recover);
    Press(CommandId::CheckWhileTyping);
    EXPECT_FALSE(AsBoolean(settings->GetSetting(SettingNumber::CheckWhileTyping)));
}

}  // namespace zentro
