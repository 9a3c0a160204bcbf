#pragma once

#include <string>
#include <string_view>

namespace zentro {

/// What came of reading a whole file.
struct FileContent {
    enum class Status {
        Read,
        NotFound,  ///< there is no such file or folder, or the name cannot be a file's name
        Failed,    ///< any other failure: no permission, a folder, a broken disk
    };
    Status status = Status::Read;
    std::string bytes;
    std::string problem;  ///< the system's text for the failure
};

/// Reads a file whole, or fails when it is larger than any text that this program works on (a
/// device can go on for ever). The path is in the system's own encoding.
FileContent ReadWholeFile(const std::string& path);

/// Writes a file whole, or leaves what was there: a regular file is replaced through a temporary
/// file beside it and a rename. A device or a pipe is written to directly.
/// Returns the system's text for the failure, empty on success.
std::string WriteWholeFile(const std::string& path, std::string_view bytes);

}  // namespace zentro
