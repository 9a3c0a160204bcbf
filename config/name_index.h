#pragma once

#include <cstdint>
#include <deque>
#include <string_view>
#include <vector>

namespace zentro {

/// Finds numbers by name and owner; letter case does not matter. An open table of its own, because
/// look-ups by name are most of a compiler's work: the standard one takes three times as long.
/// The texts of the names must outlive the index.
class NameIndex {
  public:
    static constexpr std::uint32_t kNone = UINT32_MAX;

    /// A name with its hash, for several look-ups of one name.
    struct Key {
        explicit Key(std::string_view text) : name(text), hash(HashOf(text)) {}
        std::string_view name;
        std::uint32_t hash;
    };

    /// The number entered under the name and the owner, kNone when there is none.
    std::uint32_t Find(const Key& key, std::uint32_t owner = 0) const;

    /// Enters a number, which is not kNone. False when the name has one already, which stays.
    bool Add(const Key& key, std::uint32_t value, std::uint32_t owner = 0);

  private:
    struct Entry {
        std::string_view name;
        std::uint32_t owner;
        std::uint32_t value;
    };
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t entry = kNone;
    };

    static std::uint32_t HashOf(std::string_view text);
    static std::uint32_t Mix(std::uint32_t hash, std::uint32_t owner);
    void Insert(std::uint32_t hash, std::uint32_t entry);
    void Grow();

    std::deque<Entry> entries_;
    std::vector<Slot> slots_;  ///< a power of two of them, at most half in use
};

}  // namespace zentro
