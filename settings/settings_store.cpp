#include "settings/settings_store.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <fcntl.h>
#include <fstream>
#include <random>
#include <sys/file.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>
#include <variant>

#include "config/file.h"
#include "settings/settings_file.h"
#include "settings/utf8_text.h"

namespace zentro {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kLoadFailed = "Error occurred in LoadConfig. Error text is ";
constexpr std::string_view kSaveFailed = "Error Saving Config: ";
constexpr std::size_t kLargestSettings = 16U << 20U;  // bytes; a usual file has about one thousand

// A save takes far less than their product, two seconds.
constexpr int kLockTries = 100;
constexpr std::chrono::milliseconds kLockPause{20};

/// The first free one of the names for a file that could not be read.
fs::path KeptName(const fs::path& file) {
    fs::path name = file;
    name += ".broken";
    std::error_code ignored;  // a name that cannot be examined is taken: the rename will say why
    for (int number = 2; fs::exists(fs::symlink_status(name, ignored)); ++number) {
        name = file;
        name += ".broken" + std::to_string(number);
    }
    return name;
}

/// Returns the system's text for the failure. The file that is there goes to KeptName first when
/// `keepOld` is set.
std::string ReplaceFile(const fs::path& file, std::string_view bytes, bool keepOld,
                        Durability durability) {
    std::error_code error;
    const fs::path kept = KeptName(file);
    if (keepOld) fs::rename(file, kept, error);
    if (error && error != std::errc::no_such_file_or_directory) return error.message();
    const bool isKept = keepOld && !error;
    std::string problem = WriteWholeFile(file.string(), bytes, durability);
    // The first failure is the one to tell.
    if (!problem.empty() && isKept) fs::rename(kept, file, error);
    return problem;
}

/// What the settings file holds.
struct StoredFile {
    Config config;
    std::string problem;  ///< why it could not be read whole; empty: it was
    bool isMissing = false;
};

StoredFile ReadStored(const fs::path& file) {
    const FileContent content = ReadWholeFile(file.string(), kLargestSettings);
    if (content.status == FileContent::Status::NotFound) return {{}, {}, true};
    if (content.status == FileContent::Status::Failed) return {{}, content.problem, false};
    if (content.bytes.empty()) return {{}, PathText(file) + " is empty", false};
    ParsedConfig parsed = ParseConfig(content.bytes);
    if (parsed.error.empty()) return {std::move(parsed.config), {}, false};
    return {std::move(parsed.config),
            PathText(file) + ", line " + std::to_string(parsed.line) + ": " + parsed.error, false};
}

/// Other runs of the program wait with their saves as long as it lives, but not for ever: a run
/// that was stopped must not stop the others. Where a folder cannot be locked nobody waits.
class FolderLock {
  public:
    explicit FolderLock(const fs::path& folder)
        : descriptor_(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
        if (descriptor_ < 0) return;
        for (int tries = 0; tries < kLockTries && !IsLocked(); ++tries)
            std::this_thread::sleep_for(kLockPause);
    }
    ~FolderLock() {
        if (descriptor_ >= 0) close(descriptor_);
    }
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

  private:
    /// Or cannot be.
    bool IsLocked() const {
        return flock(descriptor_, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
    }

    int descriptor_;
};

}  // namespace

fs::path ChooseSettingsFolder(const fs::path& programFolder, const fs::path& userFolder) {
    // A name that no other process uses at the same time.
    fs::path probe = programFolder / kSettingsFileName;
    probe += ".tmp" + std::to_string(std::random_device{}());
    const bool writable = std::ofstream(probe).is_open();
    std::error_code ignored;  // there is nothing to remove when the folder cannot be written
    fs::remove(probe, ignored);
    // That of another account may be for reading only.
    const fs::path file = programFolder / kSettingsFileName;
    const bool isLocked = fs::exists(file, ignored) && access(file.c_str(), W_OK) != 0;
    return (writable && !isLocked) || userFolder.empty() ? programFolder : userFolder;
}

SettingsStore::SettingsStore(const fs::path& settingsFolder, const fs::path& programFolder,
                             FailureSink onLastSaveFailure)
    : file_(settingsFolder / kSettingsFileName), onLastSaveFailure_(std::move(onLastSaveFailure)) {
    // A link is followed, so that saving replaces the file behind it and not the link.
    std::error_code error;
    if (fs::path target = fs::canonical(file_, error); !error) file_ = std::move(target);
    MendUnfinishedWrites(file_.parent_path().string());
    LoadConfig(programFolder);
}

SettingsStore::~SettingsStore() {
    if (!changed_) return;
    const std::string error = SaveSettings();
    if (!error.empty() && onLastSaveFailure_) onLastSaveFailure_(error);
}

void SettingsStore::LoadConfig(const fs::path& programFolder) {
    StoredFile stored = ReadStored(file_);
    if (stored.isMissing) {
        config_ = DefaultConfig(programFolder);
        changed_ = true;
        // The first start does not wait for the disk: there is nothing of the user's to lose.
        loadError_ = SaveSettings(Durability::TheProgram);
        return;
    }
    config_ = std::move(stored.config);
    if (stored.problem.empty()) return;
    loadError_ = std::string(kLoadFailed) + stored.problem + ". The next save keeps the file as " +
                 PathText(KeptName(file_).filename()) + '.';
}

std::string SettingsStore::Heal(const fs::path& programFolder) {
    for (const ConfigValue& record : DefaultsOfBroken(config_, DefaultConfig(programFolder)))
        SaveSetting(record.configType, record.value, record.subClass);
    return changed_ || !loadError_.empty() ? SaveSettings() : std::string();
}

SettingValue SettingsStore::GetSetting(SettingNumber number, std::string_view subClass) const {
    if (subClass.empty()) return config_.Item(number);
    const ConfigValue* record = config_.Search(number, subClass);
    return record ? record->value : SettingValue{};
}

void SettingsStore::SaveSetting(SettingNumber number, SettingValue value,
                                std::string_view subClass) {
    if (!config_.AddOrUpdate(number, value, subClass)) return;
    changes_.AddOrUpdate(number, std::move(value), subClass);
    changed_ = true;
}

/// What the file holds with this run's changes, and what it lacks of this run's settings.
Config SettingsStore::MergedWith(const Config& onDisk) const {
    Config merged = onDisk;
    for (const ConfigValue& record : config_) {
        if (merged.Search(record.configType, record.subClass) == nullptr)
            merged.AddOrUpdate(record.configType, record.value, record.subClass);
    }
    for (const ConfigValue& change : changes_)
        merged.AddOrUpdate(change.configType, change.value, change.subClass);
    return merged;
}

std::string SettingsStore::SaveSettings(Durability durability) {
    std::error_code error;
    fs::create_directories(file_.parent_path(), error);
    const FolderLock lock(file_.parent_path());
    const StoredFile stored = ReadStored(file_);
    const bool isWhole = !stored.isMissing && stored.problem.empty();
    const Config toSave = isWhole ? MergedWith(stored.config) : config_;
    const bool keepsOld = !stored.isMissing && !isWhole;
    const std::string problem =
        error ? error.message() : ReplaceFile(file_, WriteConfig(toSave), keepsOld, durability);
    changed_ = !problem.empty();
    if (changed_) return std::string(kSaveFailed) + problem;
    changes_ = {};
    return {};
}

bool FlagIsOn(const SettingsStore& settings, SettingNumber flag) {
    const SettingValue value = settings.GetSetting(flag);
    if (flag < SettingNumber::CheckWhileTyping || !std::holds_alternative<std::monostate>(value))
        return AsBoolean(value);
    const auto setting = std::ranges::find(Settings(), flag, &Setting::number);
    return setting != Settings().end() && setting->defaultNumber != 0;
}

}  // namespace zentro
