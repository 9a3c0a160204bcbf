#include "config/file.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
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

}  // namespace zentro
