#pragma once

#include <QString>
#include <QStringList>
#include <cstdint>

#include "desktop/disk.h"
#include "settings/settings_store.h"

namespace zentro {

/// What the options dialog edits. Nothing of it is saved until SaveOptions.
struct OptionsState {
    bool colourSource = false;
    bool loadLastSource = false;
    bool showObjectCode = false;
    bool saveWithoutAsking = false;
    bool checkWhileTyping = false;
    bool showAdvice = true;
    bool reopenPortWhenBack = false;
    QString portName;
    QString instructionFile;
    QString helpFile;
    QString makerSite;
    QString sourceSite;
    QString sourceFolder;  ///< without a separator at its end, unless it is a root
    QString objectFolder;  ///< the same; empty: the folder of each source file
    QString fontName;
    double fontSize = 0;  ///< in points
    /// As the settings hold them: the desktop's colours stay such until others are chosen.
    std::int32_t editPage = 0;
    std::int32_t editText = 0;
    std::int32_t terminalBack = 0;
    std::int32_t terminalText = 0;

    bool operator==(const OptionsState&) const = default;
};

/// Reads every option. One that cannot be read gets its default and a message for the user.
OptionsState LoadOptions(const SettingsStore& settings, Disk& disk, QStringList& failures);

/// The colour of a new settings file.
std::int32_t DefaultColour(SettingNumber colour);

/// Hands every option to the store, which is not yet told to write its file.
void SaveOptions(const OptionsState& options, SettingsStore& settings);

inline constexpr int kFixedPorts = 4;

/// "COM1" for 1, ...
QString FixedPortName(int number);

/// 1 to 4 for COM1 to COM4 in any letter case, otherwise 0.
int FixedPort(const QString& portName);

/// A port name as typed: in capitals, unless it holds "/" and so is a path.
QString TypedPortName(const QString& typed);

/// The folder without the separators at its end; a root keeps one.
QString FolderPath(const QString& folder);

/// The folder as it is saved: with one more separator, even behind a root's own.
QString SavedFolder(const QString& folderPath);

}  // namespace zentro
