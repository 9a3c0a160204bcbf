#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace zentro {

/// The program's settings by the numbers that stand in the settings file. A file may hold others.
/// Window positions and sizes are in twips (1/1440 inch). Colours are 0x00BBGGRR; one whose top bit
/// is set names the desktop's colour whose number is in its low byte.
enum class SettingNumber : std::int32_t {
    SerialPort = 0,
    ReopenLastSource = 1,
    LastSourceName = 2,
    LastSourceFolder = 3,
    ShowObjectCode = 4,
    EditorTextColour = 5,
    TerminalTextColour = 6,
    TerminalBackColour = 7,
    EditorPageColour = 8,
    InstructionFile = 9,
    SourceFolder = 10,
    ObjectFolder = 11,
    SourceWindowLeft = 12,
    SourceWindowTop = 13,
    SourceWindowWidth = 14,
    SourceWindowHeight = 15,
    ObjectWindowLeft = 16,
    ObjectWindowTop = 17,
    ObjectWindowWidth = 18,
    ObjectWindowHeight = 19,
    OutputWindowLeft = 20,
    OutputWindowTop = 21,
    OutputWindowWidth = 22,
    OutputWindowHeight = 23,
    TerminalWindowLeft = 24,
    TerminalWindowTop = 25,
    TerminalWindowWidth = 26,
    TerminalWindowHeight = 27,
    SaveWithoutAsking = 28,  ///< before a compile: 0 shows the save warning first
    ToolBarLayout = 29,      ///< several records, told apart by their sub-keys
    HelpFile = 30,
    MakerWebSite = 31,
    SourcesWebPage = 33,
    EditorFontName = 34,
    EditorFontSize = 35,
    ColourSource = 36,
    CheckWhileTyping = 37,  ///< read it with FlagIsOn: older files do not have it
    ReopenPortWhenBack = 38,
    WindowPlaces = 39,  ///< several records, told apart by their sub-keys; 0: never placed
    ShowAdvice = 40,    ///< about what is legal, but hardly meant; read it with FlagIsOn
    RecentFiles = 41,   ///< paths, under the sub-keys "File1", "File2", ...
    SessionFiles = 42,  ///< those that were open at the end, in the same way
    SoundVolume = 43,   ///< of the virtual board, 0 to 100; older files do not have it
    SoundMuted = 44,
    Count,
};

enum class SettingKind {
    Text,
    ProgramPath,  ///< a text; its default is a name within the program's folder
    Flag,         ///< an integer, 0 or anything else
    Integer,      ///< 16 bits; 32 where 16 do not hold it
    Colour,       ///< always 32 bits
    FloatingPoint,
};

/// A setting with its default, which is the text or the number, as its kind asks for.
struct Setting {
    SettingNumber number;
    SettingKind kind;
    std::string_view defaultText;
    double defaultNumber;
};

/// Every setting, in the order of a new settings file.
std::span<const Setting> Settings();

}  // namespace zentro
