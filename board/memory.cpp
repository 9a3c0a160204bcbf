#include "board/memory.h"

namespace zentro {

void Memory::Clear() {
    bytes_.fill(0);
    decoded_.Clear();
}

}  // namespace zentro
