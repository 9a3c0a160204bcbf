#pragma once

#include <algorithm>
#include <memory_resource>
#include <string_view>

namespace zentro {

/// Keeps texts made during a compilation for as long as the compilation lives.
class TextArena {
  public:
    explicit TextArena(std::pmr::memory_resource* memory) : memory_(memory) {}

    /// Room for a text of the length, to be filled by the caller.
    char* Allocate(std::size_t length) { return static_cast<char*>(memory_->allocate(length, 1)); }

    std::string_view Store(std::string_view text) { return Concat(text, {}); }

    std::string_view Concat(std::string_view a, std::string_view b, std::string_view c = {}) {
        const std::size_t length = a.size() + b.size() + c.size();
        char* const start = Allocate(length);
        std::copy(c.begin(), c.end(),
                  std::copy(b.begin(), b.end(), std::copy(a.begin(), a.end(), start)));
        return {start, length};
    }

  private:
    std::pmr::memory_resource* memory_;
};

}  // namespace zentro
