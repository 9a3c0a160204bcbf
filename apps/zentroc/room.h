#pragma once

#include <cstddef>
#include <span>

namespace zentro {

/// Memory for one compilation, for as long as the process lives. It is laid out so that the system
/// can give it in large pieces, because it takes longer to give a large program its memory page by
/// page than to translate it. Empty when the system has no such memory: the heap does as well.
std::span<std::byte> RoomForCompilation();

}  // namespace zentro
