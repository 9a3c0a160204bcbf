#include "config/system_file.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <unistd.h>
#include <utility>
#include <vector>
#ifdef __linux__
#include <sys/xattr.h>
#endif

namespace zentro {

namespace {

#ifdef __linux__

/// The value of an attribute, or the list of their names, which is one text with a NUL after each.
/// `read` is one of the system's functions that tell how much there is when they are given no room.
template <typename Read>
std::optional<std::string> ReadAll(Read read) {
    while (true) {
        const ssize_t size = read(nullptr, 0);
        if (size < 0) return std::nullopt;
        std::string bytes(static_cast<std::size_t>(size), '\0');
        const ssize_t got = read(bytes.data(), bytes.size());
        if (got < 0 && errno == ERANGE) continue;  // it has grown meanwhile
        if (got < 0) return std::nullopt;
        bytes.resize(static_cast<std::size_t>(got));
        return bytes;
    }
}

std::optional<std::vector<std::string>> AttributesOf(int file) {
    const auto list =
        ReadAll([&](char* names, std::size_t room) { return flistxattr(file, names, room); });
    if (!list && errno != ENOTSUP) return std::nullopt;
    std::vector<std::string> names;
    for (std::size_t begin = 0; list && begin < list->size();) {
        names.emplace_back(list->c_str() + begin);
        begin += names.back().size() + 1;
    }
    return names;
}

std::optional<std::string> AttributeOf(int file, const std::string& name) {
    return ReadAll(
        [&](char* value, std::size_t room) { return fgetxattr(file, name.c_str(), value, room); });
}

bool CopyAttributes(int from, int to) {
    const auto wanted = AttributesOf(from);
    const auto present = AttributesOf(to);
    if (!wanted || !present) return false;
    for (const std::string& name : *present) {
        if (std::ranges::find(*wanted, name) != wanted->end()) continue;
        if (fremovexattr(to, name.c_str()) != 0) return false;
    }
    return std::ranges::all_of(*wanted, [&](const std::string& name) {
        const auto value = AttributeOf(from, name);
        if (!value) return false;
        // Some are the system's own and the same for all files of a folder, but cannot be set.
        if (AttributeOf(to, name) == value) return true;
        return fsetxattr(to, name.c_str(), value->data(), value->size(), 0) == 0;
    });
}

#else

bool CopyAttributes(int, int) {
    return true;
}

#endif

}  // namespace

SystemFile::SystemFile(const std::string& path, int flags, mode_t permissions)
    : descriptor_(open(path.c_str(), flags | O_CLOEXEC, permissions)) {}

SystemFile::~SystemFile() {
    if (IsOpen()) close(descriptor_);
}

int SystemFile::Close() {
    return close(std::exchange(descriptor_, -1)) == 0 ? 0 : errno;
}

int SystemFile::WriteAll(std::string_view bytes) const {
    while (!bytes.empty()) {
        const ssize_t written = write(descriptor_, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return errno;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return 0;
}

int SystemFile::Overwrite(std::string_view bytes) const {
    if (lseek(descriptor_, 0, SEEK_SET) != 0) return errno;
    if (const int error = WriteAll(bytes); error != 0) return error;
    return ftruncate(descriptor_, static_cast<off_t>(bytes.size())) == 0 ? 0 : errno;
}

int SystemFile::WriteThrough(Durability durability) const {
    if (durability == Durability::TheProgram) return 0;
    return fsync(descriptor_) == 0 ? 0 : errno;
}

bool MakeLike(const SystemFile& made, const SystemFile& old) {
    struct stat wanted {};
    struct stat present {};
    if (fstat(old.Descriptor(), &wanted) != 0 || fstat(made.Descriptor(), &present) != 0)
        return false;
    const bool isSameOwner = present.st_uid == wanted.st_uid && present.st_gid == wanted.st_gid;
    if (!isSameOwner && fchown(made.Descriptor(), wanted.st_uid, wanted.st_gid) != 0) return false;
    if (!CopyAttributes(old.Descriptor(), made.Descriptor())) return false;
    // The last: both of the above may change them, and some file systems have none to set.
    const mode_t permissions = wanted.st_mode & kPermissions;
    if (fstat(made.Descriptor(), &present) != 0) return false;
    return (present.st_mode & kPermissions) == permissions ||
           fchmod(made.Descriptor(), permissions) == 0;
}

}  // namespace zentro
