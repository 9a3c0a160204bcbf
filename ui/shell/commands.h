#pragma once

#include <cstdint>
#include <span>

namespace zentro {

/// Everything that a menu entry, a shortcut or a button can ask of the main window.
enum class CommandId : std::uint8_t {
    NewSource,
    OpenSource,
    GetFromWeb,
    Save,
    SaveSourceAs,
    SaveAll,
    CloseSource,
    Recover,
    Print,
    Exit,
    Variables,
    Plot,
    Calculator,
    ZoomIn,
    ZoomOut,
    ResetZoom,
    Options,
    Undo,
    Redo,
    Cut,
    Copy,
    Paste,
    Find,
    FindNext,
    Replace,
    FindInText,
    Goto,
    SelectAll,
    GoToRoutine,
    GoToDeclaration,
    GoBack,
    NextMessage,
    PreviousMessage,
    FixLine,
    FixAllOfKind,
    ToggleComment,
    DuplicateLines,
    MoveLinesUp,
    MoveLinesDown,
    RenameName,
    SyntaxCheck,
    CompileSource,
    CheckWhileTyping,
    ResetMain,
    Run,
    Stop,
    StepLine,
    StepInto,
    StepLineBack,
    RunToCaret,
    PauseProgram,
    ToggleBreakpoint,
    SetCondition,
    ClearBreakpoints,
    OpenComms,
    OpenVirtualBoard,
    SaveRecording,
    OpenRecording,
    DownloadCurrent,
    DownloadSaved,
    CancelDownload,
    TileHorizontal,
    TileVertical,
    Cascade,
    ArrangeAsWorkspace,
    ArrangeIcons,
    NextWindow,
    Help,
    FirstLesson,
    Examples,
    Cogwright,
    About,
    Count,
};

enum class MenuId : std::uint8_t { File, View, Edit, Compile, Kinetron, Windows, Help };

enum class ToolBarId : std::uint8_t { None, Run, File, Text, Compile };

/// What a command needs to be of use.
enum class CommandNeed : std::uint8_t {
    Nothing,
    ChildWindow,      ///< one in front
    SourceFile,       ///< an open one
    FileToSave,       ///< the source file whose tab is selected has changes or was never saved
    AnyFileToSave,    ///< an open source file has
    MainFile,         ///< a file was chosen to be compiled
    SomethingToUndo,  ///< here and below in the text that has the focus, else in the source in
                      ///< front
    SomethingToRedo,
    TextToCut,
    TextToCopy,
    TextToPaste,
    TextToSelect,
    LineToStep,  ///< here and below on the virtual board: an open program, or one that runs
    StepToTakeBack,
    RunningProgram,
    Breakpoint,  ///< any
};

/// A menu, in the order of the menu bar.
struct MenuRow {
    MenuId id;
    const char* caption;
};

/// A tool bar. Its name is also that of its records in the settings.
struct ToolBarRow {
    ToolBarId id;
    const char* name;
    const char* caption;
    bool hasWords = false;  ///< beside its pictures
};

/// A command, in the order of its menu. Texts that a row does not need are empty.
struct CommandRow {
    CommandId id;
    MenuId menu;
    const char* name;  ///< of the menu entry
    const char* caption;
    const char* shortcut;
    const char* icon;
    ToolBarId toolBar;
    const char* toolBarKey;
    bool separatorBefore;
    const char* help;  ///< for the status bar and screen readers
    CommandNeed need = CommandNeed::Nothing;
    bool keyTellsWhy = false;  ///< the shortcut says what is missing while the command is disabled
};

std::span<const MenuRow> Menus();
std::span<const ToolBarRow> ToolBars();
std::span<const CommandRow> Commands();

}  // namespace zentro
