#include "config/name_index.h"

#include <cstring>

namespace zentro {

namespace {

std::uint64_t Load(const char* from, std::size_t length) {
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, from, length);
    return bytes;
}

/// Up to eight characters as one number: two halves that overlap, so that no loop is needed.
std::uint64_t LoadShort(std::string_view text) {
    const std::size_t length = text.size();
    if (length >= 4) return Load(text.data(), 4) | Load(text.data() + length - 4, 4) << 32;
    if (length == 0) return 0;
    return Load(text.data(), 1) | Load(text.data() + length / 2, 1) << 8 |
           Load(text.data() + length - 1, 1) << 16;
}

}  // namespace

std::uint32_t NameKey::HashOf(std::string_view text) {
    // Letters differ from their other case in one bit. Without it some signs fall together as well,
    // which a hash may do.
    constexpr std::uint64_t kWithoutCase = 0xDFDFDFDFDFDFDFDFULL;
    constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15ULL;
    constexpr std::size_t kPiece = 8;
    const auto mix = [](std::uint64_t hash, std::uint64_t piece) {
        hash = (hash ^ (piece & kWithoutCase)) * kMultiplier;
        return hash ^ (hash >> 29);
    };
    const auto finish = [](std::uint64_t hash) {
        return static_cast<std::uint32_t>(hash * kMultiplier >> 32);
    };
    std::uint64_t hash = text.size();
    if (text.size() < kPiece) return finish(mix(hash, LoadShort(text)));
    const char* const last = text.data() + text.size() - kPiece;
    for (const char* piece = text.data(); piece < last; piece += kPiece) {
        hash = mix(hash, Load(piece, kPiece));
    }
    return finish(mix(hash, Load(last, kPiece)));
}

void NameIndex::Add(std::uint32_t hash, std::uint32_t place) {
    if (2 * (used_ + 1) > slots_.size()) Grow();
    Insert({hash, place});
    ++used_;
}

void NameIndex::Insert(const Slot& slot) {
    const std::size_t mask = slots_.size() - 1;
    std::size_t i = slot.hash & mask;
    while (slots_[i].place != kNone)
        i = (i + 1) & mask;
    slots_[i] = slot;
}

void NameIndex::Grow() {
    constexpr std::size_t kSmallest = 64;
    std::vector<Slot> old(slots_.empty() ? kSmallest : 2 * slots_.size());
    old.swap(slots_);
    for (const Slot& slot : old) {
        if (slot.place != kNone) Insert(slot);
    }
}

}  // namespace zentro
