#include "apps/zentroc/room.h"

#include <cstdint>
#include <sys/mman.h>

namespace zentro {

std::span<std::byte> RoomForCompilation() {
#ifdef MADV_HUGEPAGE
    constexpr std::size_t kLargePage = std::size_t{2} << 20;
    // What is not written to costs nothing. A million lines take about as much.
    constexpr std::size_t kLargePart = std::size_t{256} << 20;
    // Enough for a small program, which would have to wait for a large page.
    constexpr std::size_t kSmallPart = std::size_t{320} << 10;

    void* const start = mmap(nullptr, kLargePart + 2 * kLargePage, PROT_READ | PROT_WRITE,
                             MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (start == MAP_FAILED) return {};
    const auto address = reinterpret_cast<std::uintptr_t>(start);
    const std::size_t toLargePart = 2 * kLargePage - address % kLargePage;
    std::byte* const largePart = static_cast<std::byte*>(start) + toLargePart;
    // Where the system declines, the pages are small ones.
    static_cast<void>(madvise(largePart, kLargePart - kLargePage, MADV_HUGEPAGE));
    return {largePart - kSmallPart, kSmallPart + kLargePart - kLargePage};
#else
    return {};
#endif
}

}  // namespace zentro
