#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "config/file.h"
#include "config/system_file.h"
#include "config/unfinished_write.h"

namespace zentro {

namespace {

constexpr mode_t kUsualPermissions = 0666;  // less what the user's umask takes away
constexpr mode_t kOwnersPermissions = 0600;
constexpr mode_t kOwnersFolder = 0700;

/// How a file is to be written. Functions here give an error number of the system, 0 for none.
struct Manner {
    Durability durability;
    Readers readers;
};

void Remove(const std::string& path) {
    static_cast<void>(std::remove(path.c_str()));
}

/// Puts the finished file in the place of the target, in one step.
int MoveInPlace(const std::string& finished, const std::string& target) {
#ifdef RENAME_EXCHANGE
    // Where there is an old file the two change places: a rename over it would have this system
    // write out the new one before it goes on.
    if (renameat2(AT_FDCWD, finished.c_str(), AT_FDCWD, target.c_str(), RENAME_EXCHANGE) == 0) {
        Remove(finished);
        return 0;
    }
#endif
    return std::rename(finished.c_str(), target.c_str()) == 0 ? 0 : errno;
}

/// The rename itself; file systems that cannot do this for a folder need it for none.
void FinishFolder(const std::string& target, Durability durability) {
    const std::filesystem::path folder = std::filesystem::path(target).parent_path();
    const SystemFile opened(folder.empty() ? "." : folder.string(), O_RDONLY | O_DIRECTORY);
    if (opened.IsOpen()) static_cast<void>(opened.WriteThrough(durability));
}

/// A new file, like the old one, which is null where there is none. Leaves nothing behind when it
/// fails, and leaves alone a file that has the name already (EEXIST).
int WriteNew(const std::string& path, std::string_view bytes, const SystemFile* old,
             Manner manner) {
    // Nobody else reads it before it is as closed to others as the old one.
    const bool isUsual = old == nullptr && manner.readers == Readers::AsUsual;
    SystemFile file(path, O_WRONLY | O_CREAT | O_EXCL,
                    isUsual ? kUsualPermissions : kOwnersPermissions);
    if (!file.IsOpen()) return errno;
    int error = old == nullptr || MakeLike(file, *old) ? 0 : EPERM;
    if (error == 0) error = file.WriteAll(bytes);
    if (error == 0) error = file.WriteThrough(manner.durability);
    if (const int closeError = file.Close(); error == 0) error = closeError;
    if (error != 0) Remove(path);
    return error;
}

/// WriteNew under a name of its own beside the target, which `path` becomes: two programs may write
/// the same file at once, and one that was killed may have left its file under the name that this
/// process has now.
int WriteBeside(const std::string& target, std::string_view bytes, const SystemFile* old,
                Manner manner, std::string& path) {
    int error = EEXIST;
    for (unsigned number = 0; error == EEXIST; ++number) {
        path = Beside(target, NameOfNewContent(getpid(), number));
        error = WriteNew(path, bytes, old, manner);
    }
    return error;
}

int Replace(const std::string& target, std::string_view bytes, const SystemFile* old,
            Manner manner) {
    int error = ENOENT;
    // Somebody on another machine who tidies up a shared folder may take this file for one that was
    // left behind.
    constexpr int kTries = 3;
    for (int i = 0; i < kTries && error == ENOENT; ++i) {
        std::string temporary;
        error = WriteBeside(target, bytes, old, manner, temporary);
        if (error != 0) return error;
        error = MoveInPlace(temporary, target);
        if (error != 0) Remove(temporary);
    }
    if (error == 0) FinishFolder(target, manner.durability);
    return error;
}

/// The folder takes no new file, or the file is another's, or it is mounted by itself.
bool OnlyInPlace(int error) {
    return error == EACCES || error == EPERM || error == EBUSY;
}

/// Keeps the old content beside the file, as `kept`.
int KeepOld(const std::string& target, const std::string& bytes, ino_t file, Manner manner,
            std::string& kept) {
    std::string temporary;
    manner.readers = Readers::Owner;
    int error = WriteBeside(target, bytes, nullptr, manner, temporary);
    if (error != 0) return error;
    kept = Beside(target, NameOfOldContent(getpid(), file));
    error = std::rename(temporary.c_str(), kept.c_str()) == 0 ? 0 : errno;
    if (error != 0) Remove(temporary);
    if (error == 0) FinishFolder(target, manner.durability);
    return error;
}

int OverwriteOrPutBack(const SystemFile& file, const std::string& target, std::string_view bytes,
                       Manner manner) {
    const FileContent old = ReadWholeFile(target);
    struct stat status {};
    if (old.status != FileContent::Status::Read) return EACCES;
    if (fstat(file.Descriptor(), &status) != 0) return errno;
    // For those who tidy up on another machine; not everywhere can a file be locked.
    static_cast<void>(flock(file.Descriptor(), LOCK_EX | LOCK_NB));
    std::string kept;
    int error = KeepOld(target, old.bytes, status.st_ino, manner, kept);
    // Where the folder takes no file there is only the old content in this process's memory.
    if (error != 0 && !OnlyInPlace(error)) return error;
    error = file.Overwrite(bytes);
    if (error == 0) error = file.WriteThrough(manner.durability);
    bool isWhole = error == 0;
    // The first failure is the one to tell; the old content needs no room that it does not have.
    if (!isWhole)
        isWhole = file.Overwrite(old.bytes) == 0 && file.WriteThrough(manner.durability) == 0;
    if (isWhole && !kept.empty()) Remove(kept);
    return error;
}

/// A link keeps pointing where it did, even to where no file is yet: it is its file that is
/// written.
std::string BehindLinks(std::filesystem::path path) {
    constexpr int kMostLinks = 40;  // the system follows no more either
    for (int i = 0; i < kMostLinks; ++i) {
        std::error_code isNoLink;
        const std::filesystem::path next = std::filesystem::read_symlink(path, isNoLink);
        if (isNoLink) break;
        path = path.parent_path() / next;
    }
    return path.string();
}

int Write(const std::string& path, std::string_view bytes, Manner manner) {
    if (path.find('\0') != std::string::npos) return EINVAL;
    SystemFile existing(path, O_WRONLY);
    if (!existing.IsOpen() && errno != ENOENT) return errno;
    const std::string target = BehindLinks(path);
    if (!existing.IsOpen()) return Replace(target, bytes, nullptr, manner);
    struct stat old {};
    if (fstat(existing.Descriptor(), &old) != 0) return errno;
    if (!S_ISREG(old.st_mode)) {
        const int error = existing.WriteAll(bytes);
        const int closeError = existing.Close();
        return error != 0 ? error : closeError;
    }
    // A file with several names has the new content under all of them.
    const int error = old.st_nlink > 1 ? EPERM : Replace(target, bytes, &existing, manner);
    return OnlyInPlace(error) ? OverwriteOrPutBack(existing, target, bytes, manner) : error;
}

int MakeFolder(const std::string& path) {
    int error = mkdir(path.c_str(), kOwnersFolder) == 0 ? 0 : errno;
    const std::string parent = std::filesystem::path(path).parent_path().string();
    if (error == ENOENT && !parent.empty() && parent != path) {
        error = MakeFolder(parent);
        if (error == 0) error = mkdir(path.c_str(), kOwnersFolder) == 0 ? 0 : errno;
    }
    if (error == 0) FinishFolder(path, Durability::PowerCut);
    std::error_code unknown;
    return error == EEXIST && std::filesystem::is_directory(path, unknown) ? 0 : error;
}

std::string TextOf(int error) {
    return error == 0 ? std::string() : std::generic_category().message(error);
}

}  // namespace

std::string WriteWholeFile(const std::string& path, std::string_view bytes, Durability durability,
                           Readers readers) {
    return TextOf(Write(path, bytes, {durability, readers}));
}

std::string MakePrivateFolders(const std::string& path) {
    return TextOf(MakeFolder(path));
}

}  // namespace zentro
