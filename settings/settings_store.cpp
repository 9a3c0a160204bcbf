#include "settings/settings_store.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <fstream>
#include <random>
#include <system_error>
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
constexpr std::uintmax_t kLargestFile = 16U << 20U;  // bytes; a usual one has about one thousand

/// Why the stream operation just made has failed.
std::error_code StreamError() {
    return errno != 0 ? std::error_code(errno, std::generic_category())
                      : std::make_error_code(std::errc::io_error);
}

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

std::error_code ReadFile(const fs::path& file, std::string& bytes) {
    std::error_code error;
    const std::uintmax_t size = fs::file_size(file, error);  // fails for what is no regular file
    if (error) return error;
    if (size > kLargestFile) return std::make_error_code(std::errc::file_too_large);
    errno = 0;
    std::ifstream stream(file, std::ios::binary);
    bytes.resize(size);
    if (!stream.read(bytes.data(), static_cast<std::streamsize>(size))) return StreamError();
    return {};
}

/// Returns the system's text for the failure. The file that is there goes to KeptName first when
/// `keepOld` is set.
std::string ReplaceFile(const fs::path& file, std::string_view bytes, bool keepOld) {
    std::error_code error;
    fs::create_directories(file.parent_path(), error);
    if (error) return error.message();
    const fs::path kept = KeptName(file);
    if (keepOld) fs::rename(file, kept, error);
    if (error && error != std::errc::no_such_file_or_directory) return error.message();
    const bool isKept = keepOld && !error;
    std::string problem = WriteWholeFile(file.string(), bytes, Durability::PowerCut);
    // The first failure is the one to tell.
    if (!problem.empty() && isKept) fs::rename(kept, file, error);
    return problem;
}

}  // namespace

fs::path ChooseSettingsFolder(const fs::path& programFolder, const fs::path& userFolder) {
    // A name that no other process uses at the same time.
    fs::path probe = programFolder / kSettingsFileName;
    probe += ".tmp" + std::to_string(std::random_device{}());
    const bool writable = std::ofstream(probe).is_open();
    std::error_code ignored;  // there is nothing to remove when the folder cannot be written
    fs::remove(probe, ignored);
    return writable || userFolder.empty() ? programFolder : userFolder;
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
    std::string bytes;
    const std::error_code error = ReadFile(file_, bytes);
    if (error == std::errc::no_such_file_or_directory) {
        config_ = DefaultConfig(programFolder);
        loadError_ = SaveSettings();
        return;
    }
    std::string reason = error.message();
    if (!error) {
        ParsedConfig parsed = ParseConfig(bytes);
        config_ = std::move(parsed.config);
        if (parsed.error.empty()) return;
        reason = PathText(file_) + ", line " + std::to_string(parsed.line) + ": " + parsed.error;
    }
    keepOldFile_ = true;
    loadError_ = std::string(kLoadFailed) + reason + ". The next save keeps the file as " +
                 PathText(KeptName(file_).filename()) + '.';
}

SettingValue SettingsStore::GetSetting(SettingNumber number, std::string_view subClass) const {
    if (subClass.empty()) return config_.Item(number);
    const ConfigValue* record = config_.Search(number, subClass);
    return record ? record->value : SettingValue{};
}

void SettingsStore::SaveSetting(SettingNumber number, SettingValue value,
                                std::string_view subClass) {
    if (config_.AddOrUpdate(number, std::move(value), subClass)) changed_ = true;
}

std::string SettingsStore::SaveSettings() {
    const std::string problem = ReplaceFile(file_, WriteConfig(config_), keepOldFile_);
    changed_ = !problem.empty();
    if (changed_) return std::string(kSaveFailed) + problem;
    keepOldFile_ = false;
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
