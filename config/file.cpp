#include "config/file.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <random>
#include <system_error>

namespace zentro {

namespace {

struct FileCloser {
    void operator()(std::FILE* file) const { static_cast<void>(std::fclose(file)); }
};
using FileHandle = std::unique_ptr<std::FILE, FileCloser>;

/// In bytes; a million lines take a tenth of it.
constexpr std::size_t kLargestFile = std::size_t{256} << 20;

std::string SystemText(int error) {
    return std::generic_category().message(error);
}

FileContent Failure(int error) {
    const bool notFound =
        error == ENOENT || error == ENOTDIR || error == ENAMETOOLONG || error == EINVAL;
    return {notFound ? FileContent::Status::NotFound : FileContent::Status::Failed,
            {},
            SystemText(error)};
}

/// Writes and closes, so that a full disk that shows only when buffers are flushed is seen too.
std::string WriteAndClose(const std::string& path, std::string_view bytes) {
    FileHandle file(std::fopen(path.c_str(), "wb"));
    if (!file) return SystemText(errno);
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size();
    const int writeError = errno;
    const bool closed = std::fclose(file.release()) == 0;
    if (!written) return SystemText(writeError);
    return closed ? std::string() : SystemText(errno);
}

/// Puts the finished file in the place of the target, in one step.
std::error_code MoveInPlace(const std::string& finished, const std::string& target) {
#ifdef RENAME_EXCHANGE
    // Where there is an old file the two change places: a rename over it would have this system
    // write out the new one before it goes on.
    if (renameat2(AT_FDCWD, finished.c_str(), AT_FDCWD, target.c_str(), RENAME_EXCHANGE) == 0) {
        static_cast<void>(std::remove(finished.c_str()));
        return {};
    }
#endif
    std::error_code failed;
    std::filesystem::rename(finished, target, failed);
    return failed;
}

}  // namespace

FileContent ReadWholeFile(const std::string& path) {
    if (path.find('\0') != std::string::npos) return Failure(EINVAL);
    FileHandle file(std::fopen(path.c_str(), "rb"));
    if (!file) return Failure(errno);
    FileContent content;
    std::error_code sizeUnknown;
    const std::uintmax_t size = std::filesystem::file_size(path, sizeUnknown);
    // One byte more than the file has, so that its end shows with the first read.
    std::size_t room = sizeUnknown ? std::size_t{1} << 16 : static_cast<std::size_t>(size) + 1;
    std::size_t length = 0;
    bool isFull = true;
    while (isFull) {
        if (length + room > kLargestFile) return Failure(EFBIG);
        content.bytes.resize(length + room);
        length += std::fread(content.bytes.data() + length, 1, room, file.get());
        isFull = length == content.bytes.size();
        room = std::max(length, std::size_t{1} << 16);
    }
    if (std::ferror(file.get()) != 0) return Failure(errno);
    content.bytes.resize(length);
    return content;
}

std::string WriteWholeFile(const std::string& path, std::string_view bytes) {
    namespace fs = std::filesystem;
    std::error_code failed;
    const fs::file_status status = fs::status(path, failed);
    if (fs::exists(status) && !fs::is_regular_file(status)) return WriteAndClose(path, bytes);

    // A link keeps pointing where it did: it is its file that is replaced.
    std::string target = path;
    if (fs::exists(status)) {
        const fs::path resolved = fs::canonical(path, failed);
        if (!failed) target = resolved.string();
    }
    // Two programs may write the same file at once, each through a temporary file of its own.
    const std::string temporary = target + ".new" + std::to_string(std::random_device{}());
    if (std::string problem = WriteAndClose(temporary, bytes); !problem.empty()) {
        static_cast<void>(std::remove(temporary.c_str()));
        return problem;
    }
    failed = MoveInPlace(temporary, target);
    if (!failed) return {};
    static_cast<void>(std::remove(temporary.c_str()));
    return failed.message();
}

}  // namespace zentro
