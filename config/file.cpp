#include "config/file.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "config/system_file.h"

namespace zentro {

namespace {

constexpr std::size_t kMegabyte = std::size_t{1} << 20;

FileContent Failed(std::string problem) {
    return {FileContent::Status::Failed, {}, std::move(problem), {}};
}

FileContent Failure(int error) {
    const bool notFound =
        error == ENOENT || error == ENOTDIR || error == ENAMETOOLONG || error == EINVAL;
    return {notFound ? FileContent::Status::NotFound : FileContent::Status::Failed,
            {},
            std::generic_category().message(error),
            {}};
}

std::string TooLarge(std::size_t largest) {
    return "The file is larger than " + std::to_string(largest / kMegabyte) + " MB";
}

FileIdentity IdentityFrom(const struct stat& status) {
    return {static_cast<std::uint64_t>(status.st_dev), static_cast<std::uint64_t>(status.st_ino)};
}

/// Reads on to the end. Another program may be writing the file, so its size is only a guess.
FileContent ReadToEnd(const SystemFile& file, std::size_t expected, std::size_t largest) {
    FileContent content;
    // One byte more than the file has, so that its end shows with the first read.
    std::size_t room = expected + 1;
    std::size_t length = 0;
    while (true) {
        if (length == content.bytes.size()) content.bytes.resize(length + room);
        const ssize_t got =
            read(file.Descriptor(), content.bytes.data() + length, content.bytes.size() - length);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return Failure(errno);
        if (got == 0) break;
        length += static_cast<std::size_t>(got);
        if (length > largest) return Failed(TooLarge(largest));
        room = std::max(length, std::size_t{1} << 16);
    }
    content.bytes.resize(length);
    return content;
}

}  // namespace

FileContent ReadWholeFile(const std::string& path, std::size_t largest) {
    if (path.find('\0') != std::string::npos) return Failure(EINVAL);
    // To open a pipe that nobody writes to would wait for a writer, a terminal could become ours.
    const SystemFile file(path, O_RDONLY | O_NONBLOCK | O_NOCTTY);
    if (!file.IsOpen() && errno == ENXIO) return Failed(std::string(kNotARegularFile));  // a socket
    if (!file.IsOpen()) return Failure(errno);
    struct stat status {};
    if (fstat(file.Descriptor(), &status) != 0) return Failure(errno);
    if (S_ISDIR(status.st_mode)) return Failure(EISDIR);
    if (!S_ISREG(status.st_mode)) return Failed(std::string(kNotARegularFile));
    const auto size = static_cast<std::uint64_t>(status.st_size);
    if (size > largest) return Failed(TooLarge(largest));
    FileContent content = ReadToEnd(file, static_cast<std::size_t>(size), largest);
    content.identity = IdentityFrom(status);
    return content;
}

std::optional<FileIdentity> IdentityOf(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) return std::nullopt;
    return IdentityFrom(status);
}

}  // namespace zentro
