#pragma once

#include <string>
#include <string_view>
#include <sys/stat.h>

#include "config/file.h"

namespace zentro {

inline constexpr mode_t kPermissions = 07777;

/// An open file of the system. Functions here give an error number of the system, 0 for none.
class SystemFile {
  public:
    SystemFile(const std::string& path, int flags, mode_t permissions = 0);
    ~SystemFile();
    SystemFile(const SystemFile&) = delete;
    SystemFile& operator=(const SystemFile&) = delete;

    bool IsOpen() const { return descriptor_ >= 0; }
    int Descriptor() const { return descriptor_; }
    int WriteAll(std::string_view bytes) const;
    /// Its bytes are those alone.
    int Overwrite(std::string_view bytes) const;
    int WriteThrough(Durability durability) const;
    /// Some failures to write show only here.
    int Close();

  private:
    int descriptor_;
};

/// Gives a new file the owner, the permissions and, where this system can, the access control list
/// and the other extended attributes of an old one, and takes away what its folder gave it. False
/// when that cannot be.
bool MakeLike(const SystemFile& made, const SystemFile& old);

}  // namespace zentro
