#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "config/file.h"

namespace zentro {

/// The files that a program has read, so that none of them is written over: not under its own name,
/// nor under another or a link.
class InputFiles {
  public:
    /// Remembers a file that was read; one that was not is passed over.
    void Add(std::string_view path, const FileContent& content);
    /// The same before it is read.
    void Add(const std::string& path);

    /// The path of the file read that a write to the path would replace; nothing when there is
    /// none.
    std::optional<std::string> ReplacedBy(const std::string& path) const;

  private:
    struct Input {
        std::string path;
        FileIdentity identity;
    };
    std::vector<Input> inputs_;
};

}  // namespace zentro
