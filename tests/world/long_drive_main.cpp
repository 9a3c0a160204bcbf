// Prints the digest of a long drive, for scripts/same-world.
#include <cstdio>

#include "tests/world/long_drive.h"

int main() {
    using namespace zentro::world;
    std::printf("%016llx\n", static_cast<unsigned long long>(DigestOfLongDrive(kLongDrive)));
}
