#include "config/unfinished_write.h"

#include <cerrno>
#include <charconv>
#include <csignal>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "config/file.h"
#include "config/system_file.h"

namespace zentro {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kBegin = ".zentro-";
constexpr std::string_view kNew = ".new";
constexpr std::string_view kOld = ".old";
constexpr time_t kLongestWrite = 10;           // seconds, of a file's content
constexpr time_t kSurelyOver = 24L * 60 * 60;  // seconds, on whatever machine it was

const time_t kBeginOfThisProcess = time(nullptr);

struct LeftOver {
    std::string path;
    struct stat status {};
    std::uintmax_t process = 0;
    std::uintmax_t number = 0;
    bool isOldContent = false;
};

/// "12-3" for the process 12 and the number 3.
bool ParseNumbers(std::string_view text, LeftOver& found) {
    const std::size_t dash = text.find('-');
    if (dash == std::string_view::npos) return false;
    const auto parse = [](std::string_view digits, std::uintmax_t& number) {
        const auto [end, error] =
            std::from_chars(digits.data(), digits.data() + digits.size(), number);
        return error == std::errc() && end == digits.data() + digits.size();
    };
    return parse(text.substr(0, dash), found.process) && parse(text.substr(dash + 1), found.number);
}

std::optional<LeftOver> AsLeftOver(const std::string& path) {
    const std::string fileName = fs::path(path).filename().string();
    std::string_view name = fileName;
    if (!name.starts_with(kBegin) || (!name.ends_with(kNew) && !name.ends_with(kOld))) return {};
    LeftOver found;
    found.path = path;
    found.isOldContent = name.ends_with(kOld);
    name.remove_prefix(kBegin.size());
    name.remove_suffix(kNew.size());
    if (!ParseNumbers(name, found)) return {};
    if (lstat(path.c_str(), &found.status) != 0 || !S_ISREG(found.status.st_mode)) return {};
    return found;
}

/// Of a process that has ended. While its number is used again that does not show for a day.
bool IsOver(const LeftOver& leftOver) {
    const time_t written = leftOver.status.st_mtime;
    if (time(nullptr) - written > kSurelyOver) return true;
    const auto process = static_cast<pid_t>(leftOver.process);
    if (process == getpid()) return written < kBeginOfThisProcess;
    return process > 0 && kill(process, 0) != 0 && errno == ESRCH;
}

std::vector<std::string> FilesIn(const std::string& folder) {
    std::vector<std::string> files;
    std::error_code error;
    fs::directory_iterator entry(folder, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        files.push_back(entry->path().string());
    }
    return files;
}

/// Nobody wrote the file since the process that was killed: then it is whole as it is.
bool IsHalfWritten(const struct stat& file, const struct stat& old) {
    const auto time = [](const struct stat& status) {
        return std::pair(status.st_mtim.tv_sec, status.st_mtim.tv_nsec);
    };
    return time(file) >= time(old) && file.st_mtim.tv_sec - old.st_mtim.tv_sec <= kLongestWrite;
}

/// True when the old content is not needed any more.
bool PutBack(const std::string& path, const LeftOver& leftOver) {
    const FileContent old = ReadWholeFile(leftOver.path);
    if (old.status != FileContent::Status::Read) return false;
    if (ReadWholeFile(path).bytes == old.bytes) return true;
    const SystemFile file(path, O_WRONLY);
    struct stat now {};
    if (!file.IsOpen() || flock(file.Descriptor(), LOCK_EX | LOCK_NB) != 0) return false;
    if (fstat(file.Descriptor(), &now) != 0 || !IsHalfWritten(now, leftOver.status)) return false;
    return file.Overwrite(old.bytes) == 0 && file.WriteThrough(Durability::PowerCut) == 0;
}

bool Remove(const LeftOver& leftOver) {
    return unlink(leftOver.path.c_str()) == 0;
}

bool MendOverwritten(const LeftOver& leftOver, const std::vector<std::string>& files) {
    for (const std::string& path : files) {
        struct stat status {};
        const bool isOfFile = lstat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
                              status.st_ino == leftOver.number;
        if (!isOfFile) continue;
        return PutBack(path, leftOver) && Remove(leftOver);
    }
    return false;
}

}  // namespace

std::string NameOfNewContent(pid_t process, unsigned number) {
    return std::string(kBegin) + std::to_string(process) + '-' + std::to_string(number) +
           std::string(kNew);
}

std::string NameOfOldContent(pid_t process, ino_t file) {
    return std::string(kBegin) + std::to_string(process) + '-' + std::to_string(file) +
           std::string(kOld);
}

std::string Beside(const std::string& path, const std::string& name) {
    return (fs::path(path).parent_path() / name).string();
}

bool MendUnfinishedWrites(const std::string& folder) {
    const std::vector<std::string> files = FilesIn(folder);
    bool removed = false;
    for (const std::string& path : files) {
        const auto leftOver = AsLeftOver(path);
        if (!leftOver || !IsOver(*leftOver)) continue;
        removed |= leftOver->isOldContent ? MendOverwritten(*leftOver, files) : Remove(*leftOver);
    }
    return removed;
}

}  // namespace zentro
