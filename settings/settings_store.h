#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "config/file.h"
#include "settings/config.h"

namespace zentro {

inline constexpr std::string_view kSettingsFileName = "ZentroCompiler.dfv";

/// The folder of the settings file of a portable copy: the program's own when files can be made
/// there and a settings file that is there can be written, otherwise the user's configuration
/// folder, which need not exist yet.
std::filesystem::path ChooseSettingsFolder(const std::filesystem::path& programFolder,
                                           const std::filesystem::path& userFolder);

/// The settings with the file that keeps them. No failure costs a file: a save replaces it whole or
/// not at all, and a file that cannot be read whole is kept under another name by the next save.
/// Several runs of the program may share the file: a save writes what this run has changed into
/// what the file holds then.
class SettingsStore {
  public:
    using FailureSink = std::function<void(const std::string& message)>;

    /// Reads the file in `settingsFolder`. When there is none, the defaults are built, with their
    /// paths in `programFolder`, and saved. `onLastSaveFailure` is told when the last save, at the
    /// end of the store's life, fails.
    SettingsStore(const std::filesystem::path& settingsFolder,
                  const std::filesystem::path& programFolder, FailureSink onLastSaveFailure);

    /// Saves what has changed since the last save.
    ~SettingsStore();

    SettingsStore(const SettingsStore&) = delete;
    SettingsStore& operator=(const SettingsStore&) = delete;

    /// What went wrong at the start, as a message for the user; empty when nothing did. The
    /// settings that were not read are missing then and read as Empty.
    const std::string& LoadError() const { return loadError_; }

    /// The value, Empty when there is none.
    SettingValue GetSetting(SettingNumber number, std::string_view subClass = {}) const;
    void SaveSetting(SettingNumber number, SettingValue value, std::string_view subClass = {});

    /// Writes the file. Returns what went wrong, as a message for the user, or an empty text.
    [[nodiscard]] std::string SaveSettings(Durability durability = Durability::PowerCut);

    /// From now on settings that the file lacks, or that nobody can read, have their defaults, with
    /// paths in the program's folder; the file is written whole again if anything was wrong with
    /// it. Comes after the user was told of LoadError. Returns what went wrong with writing, or an
    /// empty text.
    [[nodiscard]] std::string Heal(const std::filesystem::path& programFolder);

    const Config& Records() const { return config_; }

  private:
    void LoadConfig(const std::filesystem::path& programFolder);
    Config MergedWith(const Config& onDisk) const;

    std::filesystem::path file_;
    FailureSink onLastSaveFailure_;
    Config config_;
    std::string loadError_;
    Config changes_;        ///< what this run has changed since it was read or saved
    bool changed_ = false;  ///< there are changes, or the file has to be written whole
};

/// Whether a flag is on. Files of older versions lack CheckWhileTyping and those after it: these
/// have their default then, every other one that is missing is off.
bool FlagIsOn(const SettingsStore& settings, SettingNumber flag);

}  // namespace zentro
