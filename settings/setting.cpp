#include "settings/setting.h"

#include <algorithm>
#include <array>

namespace zentro {

namespace {

using enum SettingNumber;
using enum SettingKind;

constexpr double kDesktopWindow = static_cast<std::int32_t>(0x80000005);
constexpr double kDesktopWindowText = static_cast<std::int32_t>(0x80000008);
constexpr double kGreen = 0x00C000;
constexpr double kDarkGrey = 0x404040;

constexpr std::array kSettings = std::to_array<Setting>({
    {SerialPort, Text, "COM1", 0},
    {ReopenLastSource, Flag, {}, 0},
    {LastSourceName, Text, "", 0},
    {LastSourceFolder, Text, "", 0},
    {ShowObjectCode, Flag, {}, 1},
    {EditorTextColour, Colour, {}, kDesktopWindowText},
    {TerminalTextColour, Colour, {}, kGreen},
    {TerminalBackColour, Colour, {}, kDarkGrey},
    {EditorPageColour, Colour, {}, kDesktopWindow},
    {InstructionFile, ProgramPath, "ZentroCompiler.cfg", 0},
    {SourceFolder, ProgramPath, "", 0},
    {ObjectFolder, ProgramPath, "", 0},
    {SourceWindowLeft, Integer, {}, 0},
    {SourceWindowTop, Integer, {}, 0},
    {SourceWindowWidth, Integer, {}, 6000},
    {SourceWindowHeight, Integer, {}, 6300},
    {ObjectWindowLeft, Integer, {}, 6300},
    {ObjectWindowTop, Integer, {}, 0},
    {ObjectWindowWidth, Integer, {}, 6300},
    {ObjectWindowHeight, Integer, {}, 6000},
    {OutputWindowLeft, Integer, {}, 0},
    {OutputWindowTop, Integer, {}, 6000},
    {OutputWindowWidth, Integer, {}, 12600},
    {OutputWindowHeight, Integer, {}, 3000},
    {TerminalWindowLeft, Integer, {}, 2000},
    {TerminalWindowTop, Integer, {}, 1000},
    {TerminalWindowWidth, Integer, {}, 7000},
    {TerminalWindowHeight, Integer, {}, 10000},
    {SaveWithoutAsking, Flag, {}, 0},
    {ToolBarLayout, Integer, {}, 0},
    {HelpFile, ProgramPath, "ZentroCodeHelp.htm", 0},
    {MakerWebSite, Text, "", 0},
    {SourcesWebPage, Text, "", 0},
    {EditorFontName, Text, "Courier New", 0},
    {EditorFontSize, FloatingPoint, {}, 9.75},
    {ColourSource, Flag, {}, -1},
    {CheckWhileTyping, Flag, {}, 1},
    {ReopenPortWhenBack, Flag, {}, 0},
    {WindowPlaces, Integer, {}, 0},
    {ShowAdvice, Flag, {}, 1},
    {RecentFiles, Text, "", 0},
    {SessionFiles, Text, "", 0},
    {SoundVolume, Integer, {}, 60},
    {SoundMuted, Flag, {}, 0},
});

/// Numbers that older files may hold and nobody reads.
constexpr std::array kRetired{32};

constexpr bool EverySettingHasARow() {
    for (std::int32_t number = 0; number < static_cast<std::int32_t>(Count); ++number) {
        const bool isRetired = std::ranges::count(kRetired, number) == 1;
        const auto rows =
            std::ranges::count(kSettings, static_cast<SettingNumber>(number), &Setting::number);
        if (rows != (isRetired ? 0 : 1)) return false;
    }
    return true;
}
static_assert(EverySettingHasARow(), "every setting needs one row");

}  // namespace

std::span<const Setting> Settings() {
    return kSettings;
}

}  // namespace zentro
