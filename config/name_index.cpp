#include "config/name_index.h"

#include <cstring>

#include "config/text.h"

namespace zentro {

std::uint32_t NameIndex::HashOf(std::string_view text) {
    // Letters differ from their other case in one bit. Without it some signs fall together as well,
    // which a hash may do.
    constexpr std::uint64_t kWithoutCase = 0xDFDFDFDFDFDFDFDFULL;
    constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15ULL;
    std::uint64_t hash = text.size();
    while (!text.empty()) {
        std::uint64_t piece = 0;
        const std::size_t length = text.size() < sizeof piece ? text.size() : sizeof piece;
        std::memcpy(&piece, text.data(), length);
        hash = (hash ^ (piece & kWithoutCase)) * kMultiplier;
        hash ^= hash >> 29;
        text.remove_prefix(length);
    }
    return static_cast<std::uint32_t>(hash ^ (hash >> 32));
}

std::uint32_t NameIndex::Mix(std::uint32_t hash, std::uint32_t owner) {
    constexpr std::uint32_t kSpread = 0x85EBCA6BU;
    return hash ^ (owner * kSpread);
}

std::uint32_t NameIndex::Find(const Key& key, std::uint32_t owner) const {
    if (slots_.empty()) return kNone;
    const std::uint32_t hash = Mix(key.hash, owner);
    const std::size_t mask = slots_.size() - 1;
    for (std::size_t i = hash & mask; slots_[i].entry != kNone; i = (i + 1) & mask) {
        if (slots_[i].hash != hash) continue;
        const Entry& entry = entries_[slots_[i].entry];
        if (entry.owner == owner && EqualsIgnoreCase(entry.name, key.name)) return entry.value;
    }
    return kNone;
}

bool NameIndex::Add(const Key& key, std::uint32_t value, std::uint32_t owner) {
    if (Find(key, owner) != kNone) return false;
    if (2 * (entries_.size() + 1) > slots_.size()) Grow();
    entries_.push_back({key.name, owner, value});
    Insert(Mix(key.hash, owner), static_cast<std::uint32_t>(entries_.size() - 1));
    return true;
}

void NameIndex::Insert(std::uint32_t hash, std::uint32_t entry) {
    const std::size_t mask = slots_.size() - 1;
    std::size_t i = hash & mask;
    while (slots_[i].entry != kNone)
        i = (i + 1) & mask;
    slots_[i] = {hash, entry};
}

void NameIndex::Grow() {
    constexpr std::size_t kSmallest = 64;
    std::vector<Slot> old(slots_.empty() ? kSmallest : 2 * slots_.size());
    old.swap(slots_);
    for (const Slot& slot : old) {
        if (slot.entry != kNone) Insert(slot.hash, slot.entry);
    }
}

}  // namespace zentro
