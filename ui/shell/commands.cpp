#include "ui/shell/commands.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace zentro {

namespace {

using enum CommandId;

constexpr auto kNone = ToolBarId::None;

constexpr std::array kMenus{
    MenuRow{MenuId::File, "&File"},         MenuRow{MenuId::View, "&View"},
    MenuRow{MenuId::Edit, "&Edit"},         MenuRow{MenuId::Compile, "&Compile"},
    MenuRow{MenuId::Kinetron, "&Kinetron"}, MenuRow{MenuId::Windows, "&Windows"},
    MenuRow{MenuId::Help, "&Help"},
};

constexpr std::array kToolBars{
    ToolBarRow{ToolBarId::Run, "ToolbarRun", "Run", true},
    ToolBarRow{ToolBarId::File, "ToolbarFile", "File"},
    ToolBarRow{ToolBarId::Text, "ToolbarText", "Text"},
    ToolBarRow{ToolBarId::Compile, "ToolbarCompile", "Compile"},
};

// clang-format off
constexpr std::array kCommands{
    CommandRow{NewSource, MenuId::File, "Menu_File_NewSource", "&New Source File", "Ctrl+N", "file-new", ToolBarId::File, "File_New", false, "Begin a new program"},
    CommandRow{OpenSource, MenuId::File, "Menu_File_OpenSource", "&Open Source File", "Ctrl+O", "file-open", ToolBarId::File, "File_Open", false, "Open a program from disk"},
    CommandRow{GetFromWeb, MenuId::File, "Menu_File_GetFromWeb", "&Get Source from Web", "", "", kNone, "", false, "Show the web page with example programs"},
    CommandRow{Save, MenuId::File, "Menu_File_Save", "&Save Source File", "Ctrl+S", "file-save", ToolBarId::File, "File_Save", true, "Save the program in front", CommandNeed::FileToSave, true},
    CommandRow{SaveSourceAs, MenuId::File, "Menu_File_SaveSourceAs", "Save Source File As", "Ctrl+Shift+S", "", kNone, "", false, "Save the program in front under another name", CommandNeed::SourceFile, true},
    CommandRow{SaveAll, MenuId::File, "Menu_File_SaveAll", "Save All Source", "", "file-save-all", ToolBarId::File, "File_SaveAll", false, "Save every open program", CommandNeed::AnyFileToSave},
    CommandRow{CloseSource, MenuId::File, "Menu_File_Close", "&Close Window", "Ctrl+W", "", kNone, "", false, "Close the window in front", CommandNeed::ChildWindow},
    CommandRow{Recover, MenuId::File, "Menu_File_Recover", "&Recover Unsaved Text", "", "", kNone, "", true, "Show the copies that were kept of unsaved text"},
    CommandRow{Print, MenuId::File, "Menu_File_Print", "&Print Source File", "Ctrl+P", "file-print", ToolBarId::File, "File_Print", true, "Print the program in front", CommandNeed::SourceFile},
    CommandRow{Exit, MenuId::File, "Menu_File_Exit", "E&xit", "Ctrl+Q", "", kNone, "", true, "Close the program"},

    CommandRow{Variables, MenuId::View, "Menu_View_Variables", "View &Variables", "F11", "variables", kNone, "", false, "Show the values of the program's variables"},
    CommandRow{Plot, MenuId::View, "Menu_View_Plot", "View &Plot", "Shift+F11", "plot", kNone, "", false, "Show how variables, inputs and outputs of the virtual board go over time"},
    CommandRow{Calculator, MenuId::View, "Menu_View_Calculator", "View Hex &Calculator", "F12", "calculator", kNone, "", false, "Convert between decimal and hexadecimal"},
    CommandRow{ZoomIn, MenuId::View, "Menu_View_ZoomIn", "Zoom &In", "Ctrl++", "", kNone, "", true, "Show the text larger", CommandNeed::SourceFile},
    CommandRow{ZoomOut, MenuId::View, "Menu_View_ZoomOut", "Zoom Ou&t", "Ctrl+-", "", kNone, "", false, "Show the text smaller", CommandNeed::SourceFile},
    CommandRow{ResetZoom, MenuId::View, "Menu_View_ResetZoom", "&Normal Size", "Ctrl+0", "", kNone, "", false, "Show the text in its normal size", CommandNeed::SourceFile},
    CommandRow{Options, MenuId::View, "Menu_View_Options", "&Options", "", "options", kNone, "", true, "Change the settings"},

    CommandRow{Undo, MenuId::Edit, "Menu_Edit_Undo", "&Undo last", "Ctrl+Z", "edit-undo", kNone, "", false, "Take the last change back", CommandNeed::SomethingToUndo},
    CommandRow{Redo, MenuId::Edit, "Menu_Edit_Redo", "Re&do", "Ctrl+Y", "edit-redo", kNone, "", false, "Make the change again that was taken back", CommandNeed::SomethingToRedo},
    CommandRow{Cut, MenuId::Edit, "Menu_Edit_Cut", "Cu&t", "Ctrl+X", "edit-cut", ToolBarId::Text, "Cut", true, "Move the selected text to the clipboard", CommandNeed::TextToCut},
    CommandRow{Copy, MenuId::Edit, "Menu_Edit_Copy", "&Copy", "Ctrl+C", "edit-copy", ToolBarId::Text, "Copy", false, "Copy the selected text to the clipboard", CommandNeed::TextToCopy},
    CommandRow{Paste, MenuId::Edit, "Menu_Edit_Paste", "&Paste ", "Ctrl+V", "edit-paste", ToolBarId::Text, "Paste", false, "Insert the text of the clipboard", CommandNeed::TextToPaste},
    CommandRow{Find, MenuId::Edit, "Menu_Edit_Find", "Find", "Ctrl+F", "edit-find", ToolBarId::Text, "Find", true, "Look for text in the open programs", CommandNeed::SourceFile},
    CommandRow{FindNext, MenuId::Edit, "Menu_Edit_FindNext", "Find &Next", "F3", "", kNone, "", false, "Look for the same text again", CommandNeed::SourceFile},
    CommandRow{Replace, MenuId::Edit, "Menu_Edit_Replace", "&Replace", "Ctrl+H", "", kNone, "", false, "Replace text in the open programs", CommandNeed::SourceFile},
    CommandRow{FindInText, MenuId::Edit, "Menu_Edit_FindInText", "Find in This Te&xt", "Ctrl+Shift+F", "", kNone, "", false, "Find while you type, in the program in front", CommandNeed::SourceFile},
    CommandRow{Goto, MenuId::Edit, "Menu_Edit_Goto", "&Goto Line Number", "Ctrl+G", "", kNone, "", true, "Go to a line of the program in front", CommandNeed::SourceFile},
    CommandRow{SelectAll, MenuId::Edit, "Menu_Edit_SelectAll", "Select &All", "Ctrl+A", "", kNone, "", false, "Select the whole text", CommandNeed::TextToSelect},
    CommandRow{GoToRoutine, MenuId::Edit, "Menu_Edit_GotoRoutine", "Go to R&outine", "Ctrl+Shift+O", "", kNone, "", true, "Choose a routine, event or table to go to", CommandNeed::SourceFile},
    CommandRow{GoToDeclaration, MenuId::Edit, "Menu_Edit_GotoDeclaration", "Go to D&eclaration", "F2", "", kNone, "", false, "Go to where the name at the caret is declared", CommandNeed::SourceFile},
    CommandRow{GoBack, MenuId::Edit, "Menu_Edit_GoBack", "Go &Back", "Shift+F2", "", kNone, "", false, "Go back to where you were before", CommandNeed::SourceFile},
    CommandRow{NextMessage, MenuId::Edit, "Menu_Edit_NextMessage", "Next &Message", "F4", "", kNone, "", false, "Go to the next mistake in the program", CommandNeed::SourceFile},
    CommandRow{PreviousMessage, MenuId::Edit, "Menu_Edit_PreviousMessage", "Pre&vious Message", "Shift+F4", "", kNone, "", false, "Go to the mistake before", CommandNeed::SourceFile},
    CommandRow{FixLine, MenuId::Edit, "Menu_Edit_FixLine", "&Fix Line", "Alt+Return", "", kNone, "", false, "Write what the message beside the line says", CommandNeed::SourceFile},
    CommandRow{FixAllOfKind, MenuId::Edit, "Menu_Edit_FixAllOfKind", "Fix All of This &Kind", "Alt+Shift+Return", "", kNone, "", false, "Fix the same mistake in all lines of the file", CommandNeed::SourceFile},
    CommandRow{ToggleComment, MenuId::Edit, "Menu_Edit_ToggleComment", "Comment &In or Out", "Ctrl+/", "", kNone, "", true, "Make the lines a comment, or a comment lines of the program", CommandNeed::SourceFile},
    CommandRow{DuplicateLines, MenuId::Edit, "Menu_Edit_Duplicate", "Dup&licate", "Ctrl+D", "", kNone, "", false, "Repeat the selection or the line below itself", CommandNeed::SourceFile},
    CommandRow{MoveLinesUp, MenuId::Edit, "Menu_Edit_MoveLinesUp", "Move Lines U&p", "Alt+Up", "", kNone, "", false, "Exchange the lines with the one above", CommandNeed::SourceFile},
    CommandRow{MoveLinesDown, MenuId::Edit, "Menu_Edit_MoveLinesDown", "Move Lines Do&wn", "Alt+Down", "", kNone, "", false, "Exchange the lines with the one below", CommandNeed::SourceFile},
    CommandRow{RenameName, MenuId::Edit, "Menu_Edit_Rename", "Rename...", "Ctrl+R", "", kNone, "", false, "Give the name at the caret another name in the whole program", CommandNeed::SourceFile},

    CommandRow{SyntaxCheck, MenuId::Compile, "Menu_Compile_SyntaxCheck", "&Syntax Check", "Shift+F5", "syntax-check", ToolBarId::Compile, "SyntaxCheck", false, "Look for mistakes in the program"},
    CommandRow{CompileSource, MenuId::Compile, "Menu_Compile_CompileSource", "&Compile Source ", "F5", "compile", ToolBarId::Compile, "Compile", false, "Translate the program into object code"},
    CommandRow{CheckWhileTyping, MenuId::Compile, "Menu_Compile_CheckWhileTyping", "Check &While Typing", "", "", kNone, "", true, "Mark mistakes as soon as they are typed"},
    CommandRow{ResetMain, MenuId::Compile, "menu_compile_resetMain", "&Reset File To Compile (temporary)", "", "", kNone, "", true, "Forget which file is the one to compile", CommandNeed::MainFile},

    CommandRow{Run, MenuId::Kinetron, "Menu_Kinetron_Run", "&Run", "F9", "run-program", ToolBarId::Run, "Run", false, "Run the program in front on the board, as it stands in the editor"},
    CommandRow{Stop, MenuId::Kinetron, "Menu_Kinetron_Stop", "&Stop", "Shift+F9", "stop-program", ToolBarId::Run, "Stop", false, "Stop the program and put every output of the board to rest"},
    CommandRow{StepLine, MenuId::Kinetron, "Menu_Kinetron_StepLine", "Step &Line", "F10", "step-line", ToolBarId::Run, "StepLine", true, "Carry out one line of the program on the virtual board, with the routines that it calls", CommandNeed::LineToStep},
    CommandRow{StepInto, MenuId::Kinetron, "Menu_Kinetron_StepInto", "Step &Into", "Ctrl+F10", "", kNone, "", false, "Go to the next line, into a routine or the handler of an event", CommandNeed::LineToStep},
    CommandRow{StepLineBack, MenuId::Kinetron, "Menu_Kinetron_StepLineBack", "Step Line &Back", "Shift+F10", "step-line-back", ToolBarId::Run, "StepLineBack", false, "Take the last line back, with everything that it did", CommandNeed::StepToTakeBack},
    CommandRow{RunToCaret, MenuId::Kinetron, "Menu_Kinetron_RunToCaret", "Run to the C&aret", "Ctrl+Shift+F10", "", kNone, "", false, "Run the program until it comes to the line of the caret", CommandNeed::SourceFile},
    CommandRow{PauseProgram, MenuId::Kinetron, "Menu_Kinetron_Pause", "&Pause or Go On", "Ctrl+F8", "", kNone, "", false, "Hold the program on the virtual board where it is, or let it go on", CommandNeed::RunningProgram},
    CommandRow{ToggleBreakpoint, MenuId::Kinetron, "Menu_Kinetron_ToggleBreakpoint", "Breakpoint in &This Line", "Ctrl+F9", "", kNone, "", true, "Hold the program before the line of the caret, or not any more", CommandNeed::SourceFile},
    CommandRow{SetCondition, MenuId::Kinetron, "Menu_Kinetron_SetCondition", "Breakpoint with a Con&dition...", "Ctrl+Shift+F9", "", kNone, "", false, "Hold the program before the line of the caret only when something is true", CommandNeed::SourceFile},
    CommandRow{ClearBreakpoints, MenuId::Kinetron, "Menu_Kinetron_ClearBreakpoints", "R&emove All Breakpoints", "", "", kNone, "", false, "Take every breakpoint of every file away", CommandNeed::Breakpoint},
    CommandRow{OpenComms, MenuId::Kinetron, "Menu_Kinetron_OpenComms", "Open Terminal  Window", "F6", "terminal", ToolBarId::Compile, "Kinetron", true, "Connect to the board"},
    CommandRow{OpenVirtualBoard, MenuId::Kinetron, "Menu_Kinetron_OpenVirtualBoard", "Open &Virtual Board", "F8", "virtual-board", ToolBarId::Compile, "VirtualBoard", false, "Work with a board on the screen"},
    CommandRow{SaveRecording, MenuId::Kinetron, "Menu_Kinetron_SaveRecording", "Save Recordin&g...", "", "", kNone, "", true, "Keep the run so far in a file, from which it can be replayed exactly"},
    CommandRow{OpenRecording, MenuId::Kinetron, "Menu_Kinetron_OpenRecording", "Open Recordin&g...", "", "", kNone, "", false, "Replay a run that was kept in a file on the virtual board, with steps forward and back"},
    CommandRow{DownloadCurrent, MenuId::Kinetron, "Menu_Kinetron_DownloadCurrent", "Download Current Program", "F7", "download", ToolBarId::Compile, "Download", true, "Send the compiled program to the board"},
    CommandRow{DownloadSaved, MenuId::Kinetron, "Menu_Kinetron_DowloadSaved", "Download Saved Program", "Shift+F7", "", kNone, "", false, "Send an object file to the board"},
    CommandRow{CancelDownload, MenuId::Kinetron, "Menu_Kinetron_CancelDownload", "&Cancel Download", "", "stop", kNone, "", false, "End the download that is going on"},

    CommandRow{TileHorizontal, MenuId::Windows, "Menu_Windows_TileHorizontal", "Tile &Horizontally", "", "", kNone, "", false, "Put the windows one below the other", CommandNeed::ChildWindow},
    CommandRow{TileVertical, MenuId::Windows, "Menu_Windows_TileVertical", "Tile &Vertically", "", "", kNone, "", false, "Put the windows side by side", CommandNeed::ChildWindow},
    CommandRow{Cascade, MenuId::Windows, "Menu_Windows_Cascade", "Arrange in &Cascade", "", "", kNone, "", false, "Put the windows one over the other", CommandNeed::ChildWindow},
    CommandRow{ArrangeAsWorkspace, MenuId::Windows, "Menu_Windows_ArrangeAsWorkspace", "Arrange as &Workspace", "", "", kNone, "", false, "Give every window the place that the program has for it", CommandNeed::ChildWindow},
    CommandRow{ArrangeIcons, MenuId::Windows, "Menu_Windows_ArrangeIcons", "Arrange &Icons", "", "", kNone, "", false, "Put minimised windows in a row", CommandNeed::ChildWindow},
    CommandRow{NextWindow, MenuId::Windows, "Menu_Windows_Next", "&Next Window", "Ctrl+Tab", "", kNone, "", true, "Bring the next window to the front", CommandNeed::ChildWindow},

    CommandRow{Help, MenuId::Help, "Menu_Help_Help", "&Help", "F1", "help", kNone, "", false, "Show the handbook, at the statement or message under the caret"},
    CommandRow{FirstLesson, MenuId::Help, "Menu_Help_FirstLesson", "&First Lesson", "", "", kNone, "", false, "Read the first lesson beside an empty program"},
    CommandRow{Examples, MenuId::Help, "Menu_Help_Examples", "&Example Programs", "", "", kNone, "", false, "Choose one of the example programs and see what each does"},
    CommandRow{Cogwright, MenuId::Help, "Menu_Help_Cogwright", "&Cogwright on the Web", "", "", kNone, "", true, "Show the maker's web site"},
    CommandRow{About, MenuId::Help, "Menu_Help_About", "&About Cogwright ZentroCompiler", "", "", kNone, "", false, "Show the version of this program"},
};
// clang-format on

constexpr bool EveryCommandHasARow() {
    for (std::size_t id = 0; id < static_cast<std::size_t>(Count); ++id) {
        const auto rows =
            std::ranges::count(kCommands, static_cast<CommandId>(id), &CommandRow::id);
        if (rows != 1) return false;
    }
    return true;
}
static_assert(EveryCommandHasARow(), "every command needs one row");

}  // namespace

std::span<const MenuRow> Menus() {
    return kMenus;
}
std::span<const ToolBarRow> ToolBars() {
    return kToolBars;
}
std::span<const CommandRow> Commands() {
    return kCommands;
}

}  // namespace zentro
