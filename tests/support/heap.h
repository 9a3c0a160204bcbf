#pragma once

#include <cstddef>
#include <malloc.h>

// Of the address sanitizer, which has a heap of its own; null in a build without it.
// NOLINTNEXTLINE(bugprone-reserved-identifier)
extern "C" std::size_t __sanitizer_get_current_allocated_bytes() __attribute__((weak));

namespace zentro {

/// In bytes: what the program has allocated and not yet freed.
inline std::size_t HeapInUse() {
    if (__sanitizer_get_current_allocated_bytes != nullptr)
        return __sanitizer_get_current_allocated_bytes();
    return mallinfo2().uordblks;
}

}  // namespace zentro
