#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zentro {

/// Tells files apart whatever names and links lead to them.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t number = 0;
    bool operator==(const FileIdentity&) const = default;
};

/// That of the file behind the path and its links; nothing when there is none.
std::optional<FileIdentity> IdentityOf(const std::string& path);

/// What came of reading a whole file.
struct FileContent {
    enum class Status {
        Read,
        NotFound,  ///< there is no such file or folder, or the name cannot be a file's name
        Failed,    ///< any other failure: no permission, a folder, a device, a broken disk
    };
    Status status = Status::Read;
    std::string bytes;
    std::string problem;                     ///< why it was not read, as the user is told
    std::optional<FileIdentity> identity{};  ///< of a file on a disk that was read
};

/// In bytes, of any text that this program works on; a million lines take a tenth of it.
inline constexpr std::size_t kLargestFile = std::size_t{256} << 20;

/// What is said of a pipe, a device and the like.
inline constexpr std::string_view kNotARegularFile =
    "It is no regular file but a device, a pipe or a socket";

/// Reads a file whole. This is the one way in which files that a user names are opened for reading:
/// only a regular file is, since a pipe can keep its reader waiting and a device can go on for
/// ever, and only one of at most `largest` bytes. The path is in the system's own encoding.
FileContent ReadWholeFile(const std::string& path, std::size_t largest = kLargestFile);

/// What a finished write has to outlast.
enum class Durability : std::uint8_t {
    TheProgram,  ///< its end; the system writes the bytes to the disk when it likes
    PowerCut,    ///< takes as long as the disk does: for what cannot be made again
};

/// Who may read a file that is new.
enum class Readers : std::uint8_t {
    AsUsual,  ///< as the user wants it for files
    Owner,    ///< the user alone
};

/// Writes a file whole, or leaves what was there. A regular file is replaced through a temporary
/// file beside it and a rename; it keeps its owner, its permissions, its access control list and
/// other extended attributes, and the symbolic links that lead to it. Where that cannot be, as for
/// a file that has other names (hard links), is another user's, or lies in a folder that takes no
/// new file, its content is overwritten, and put back when that fails; meanwhile the old content
/// is kept beside it where the folder takes it. A file that may not be written is left alone, a
/// device or a pipe is written to directly. The path is in the system's own encoding; `readers`
/// counts for a file that is new. Returns the system's text for the failure, empty on success.
std::string WriteWholeFile(const std::string& path, std::string_view bytes,
                           Durability durability = Durability::TheProgram,
                           Readers readers = Readers::AsUsual);

/// Tidies a folder up after writes of processes that were killed: removes the temporary files that
/// they left, and gives a file that was being overwritten its old content back. True when there was
/// such a file and it is gone now.
bool MendUnfinishedWrites(const std::string& folder);

/// Makes those folders of the path that are missing, for the user alone. They are on the disk when
/// this returns. Returns the system's text for the failure, empty on success.
std::string MakePrivateFolders(const std::string& path);

}  // namespace zentro
