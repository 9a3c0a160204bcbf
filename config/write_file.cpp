#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "config/file.h"

namespace zentro {

namespace {

constexpr mode_t kPermissions = 07777;
constexpr mode_t kUsualPermissions = 0666;  // less what the user's umask takes away
constexpr mode_t kOwnersPermissions = 0600;
constexpr mode_t kOwnersFolder = 0700;

/// How a file is to be written.
struct Manner {
    Durability durability;
    Readers readers;
};

mode_t PermissionsOfNew(Readers readers) {
    return readers == Readers::Owner ? kOwnersPermissions : kUsualPermissions;
}

/// An open file of the system. The functions below give an error number of the system, 0 for none.
class OpenFile {
  public:
    OpenFile(const std::string& path, int flags, mode_t permissions = 0)
        : descriptor_(open(path.c_str(), flags | O_CLOEXEC, permissions)) {}
    ~OpenFile() {
        if (IsOpen()) close(descriptor_);
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    bool IsOpen() const { return descriptor_ >= 0; }
    int Descriptor() const { return descriptor_; }
    /// Some failures to write show only here.
    int Close() { return close(std::exchange(descriptor_, -1)) == 0 ? 0 : errno; }

  private:
    int descriptor_;
};

int WriteAll(const OpenFile& file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(file.Descriptor(), bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return errno;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return 0;
}

int Finish(const OpenFile& file, Durability durability) {
    if (durability == Durability::TheProgram) return 0;
    return fsync(file.Descriptor()) == 0 ? 0 : errno;
}

/// Gives a new file the owner and the permissions of the old one.
bool MakeLike(const OpenFile& file, const struct stat& old) {
    struct stat made {};
    if (fstat(file.Descriptor(), &made) != 0) return false;
    const bool isSameOwner = made.st_uid == old.st_uid && made.st_gid == old.st_gid;
    if (!isSameOwner && fchown(file.Descriptor(), old.st_uid, old.st_gid) != 0) return false;
    const mode_t permissions = old.st_mode & kPermissions;
    if (isSameOwner && (made.st_mode & kPermissions) == permissions) return true;
    return fchmod(file.Descriptor(), permissions) == 0;
}

/// Puts the finished file in the place of the target, in one step.
int MoveInPlace(const std::string& finished, const std::string& target) {
#ifdef RENAME_EXCHANGE
    // Where there is an old file the two change places: a rename over it would have this system
    // write out the new one before it goes on.
    if (renameat2(AT_FDCWD, finished.c_str(), AT_FDCWD, target.c_str(), RENAME_EXCHANGE) == 0) {
        static_cast<void>(std::remove(finished.c_str()));
        return 0;
    }
#endif
    return std::rename(finished.c_str(), target.c_str()) == 0 ? 0 : errno;
}

/// The rename itself; file systems that cannot do this for a folder need it for none.
void FinishFolder(const std::string& target) {
    const std::filesystem::path folder = std::filesystem::path(target).parent_path();
    const OpenFile opened(folder.empty() ? "." : folder.string(), O_RDONLY | O_DIRECTORY);
    if (opened.IsOpen()) static_cast<void>(fsync(opened.Descriptor()));
}

/// A new file, like the old one, which is null where there is none. Leaves nothing behind when it
/// fails, and leaves alone a file that has the name already (EEXIST).
int WriteNew(const std::string& path, std::string_view bytes, const struct stat* old,
             Manner manner) {
    OpenFile file(path, O_WRONLY | O_CREAT | O_EXCL,
                  old != nullptr ? old->st_mode & kPermissions : PermissionsOfNew(manner.readers));
    if (!file.IsOpen()) return errno;
    int error = old == nullptr || MakeLike(file, *old) ? 0 : EPERM;
    if (error == 0) error = WriteAll(file, bytes);
    if (error == 0) error = Finish(file, manner.durability);
    if (const int closeError = file.Close(); error == 0) error = closeError;
    if (error != 0) static_cast<void>(std::remove(path.c_str()));
    return error;
}

int Replace(const std::string& target, std::string_view bytes, const struct stat* old,
            Manner manner) {
    // Two programs may write the same file at once, each through a temporary file of its own; one
    // that was killed may have left its file under the name that this process has now.
    std::string temporary = target + ".new" + std::to_string(getpid());
    int error = WriteNew(temporary, bytes, old, manner);
    while (error == EEXIST) {
        temporary += '0';
        error = WriteNew(temporary, bytes, old, manner);
    }
    if (error != 0) return error;
    error = MoveInPlace(temporary, target);
    if (error != 0) static_cast<void>(std::remove(temporary.c_str()));
    if (error == 0 && manner.durability == Durability::PowerCut) FinishFolder(target);
    return error;
}

/// The folder takes no new file, or the file is another's, or it is mounted by itself.
bool OnlyInPlace(int error) {
    return error == EACCES || error == EPERM || error == EBUSY;
}

int Overwrite(const OpenFile& file, std::string_view bytes) {
    if (lseek(file.Descriptor(), 0, SEEK_SET) != 0) return errno;
    if (const int error = WriteAll(file, bytes); error != 0) return error;
    return ftruncate(file.Descriptor(), static_cast<off_t>(bytes.size())) == 0 ? 0 : errno;
}

int OverwriteOrPutBack(const OpenFile& file, const std::string& path, std::string_view bytes,
                       Durability durability) {
    const FileContent old = ReadWholeFile(path);
    if (old.status != FileContent::Status::Read) return EACCES;
    int error = Overwrite(file, bytes);
    if (error == 0) error = Finish(file, durability);
    // The first failure is the one to tell; the old content needs no room that it does not have.
    if (error != 0) static_cast<void>(Overwrite(file, old.bytes));
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
    OpenFile existing(path, O_WRONLY);
    if (!existing.IsOpen() && errno != ENOENT) return errno;
    struct stat old {};
    if (existing.IsOpen() && fstat(existing.Descriptor(), &old) != 0) return errno;
    if (existing.IsOpen() && !S_ISREG(old.st_mode)) {
        const int error = WriteAll(existing, bytes);
        const int closeError = existing.Close();
        return error != 0 ? error : closeError;
    }
    const int error = Replace(BehindLinks(path), bytes, existing.IsOpen() ? &old : nullptr, manner);
    if (!existing.IsOpen() || !OnlyInPlace(error)) return error;
    return OverwriteOrPutBack(existing, path, bytes, manner.durability);
}

int MakeFolder(const std::string& path) {
    int error = mkdir(path.c_str(), kOwnersFolder) == 0 ? 0 : errno;
    const std::string parent = std::filesystem::path(path).parent_path().string();
    if (error == ENOENT && !parent.empty() && parent != path) {
        error = MakeFolder(parent);
        if (error == 0) error = mkdir(path.c_str(), kOwnersFolder) == 0 ? 0 : errno;
    }
    if (error == 0) FinishFolder(path);
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
