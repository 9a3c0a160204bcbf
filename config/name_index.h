#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace zentro {

/// A name with its hash, which is the same whatever the name's letter case, for several look-ups of
/// one name.
struct NameKey {
    NameKey(std::string_view text) : name(text), hash(HashOf(text)) {}  // NOLINT: any name is a key

    /// The hash of the name among the names of one owner.
    std::uint32_t HashFor(std::uint32_t owner) const {
        // The upper half of a product depends on all of both factors.
        constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15ULL;
        const std::uint64_t both = (std::uint64_t{hash} << 32 | owner) * kSpread;
        return static_cast<std::uint32_t>((both ^ both >> 29) * kSpread >> 32);
    }

    static std::uint32_t HashOf(std::string_view text);

    std::string_view name;
    std::uint32_t hash;
};

/// Finds the places of things in a list by the hashes of their names. An open table of its own,
/// because look-ups by name are much of a compiler's work: the standard one takes three times as
/// long. The names themselves stay in the list: who looks up tells whether a thing is the wanted
/// one.
class NameIndex {
  public:
    static constexpr std::uint32_t kNone = UINT32_MAX;

    /// The place of the thing with the hash for which `isWanted(place)` is true; kNone when there
    /// is none.
    template <typename IsWanted>
    std::uint32_t Find(std::uint32_t hash, IsWanted isWanted) const {
        if (slots_.empty()) return kNone;
        const std::size_t mask = slots_.size() - 1;
        for (std::size_t i = hash & mask; slots_[i].place != kNone; i = (i + 1) & mask) {
            if (slots_[i].hash == hash && isWanted(slots_[i].place)) return slots_[i].place;
        }
        return kNone;
    }

    /// Enters the place of a thing that is not in the index yet.
    void Add(std::uint32_t hash, std::uint32_t place);

  private:
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t place = kNone;  ///< kNone: the slot is free
    };

    void Insert(const Slot& slot);
    void Grow();

    std::vector<Slot> slots_;  ///< a power of two of them, at most half in use
    std::size_t used_ = 0;
};

}  // namespace zentro
