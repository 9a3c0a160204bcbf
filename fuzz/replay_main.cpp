// Runs a fuzz target over the files of its corpus, without libFuzzer: what it has once been through
// it must go through again. Any folders and files may be named.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

/// In the order of their names, so that a failure comes at the same place again.
std::vector<fs::path> FilesOf(const fs::path& place) {
    if (!fs::is_directory(place)) return {place};
    std::vector<fs::path> files{fs::directory_iterator(place), fs::directory_iterator()};
    std::ranges::sort(files);
    return files;
}

void Replay(const fs::path& path) {
    std::fprintf(stderr, "%s\n", path.c_str());  // the last one named is the one that fails
    std::ifstream file(path, std::ios::binary);
    file.exceptions(std::ios::failbit);
    const std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

}  // namespace

int main(int argc, char** argv) {
    std::size_t count = 0;
    for (int i = 1; i < argc; ++i) {
        for (const fs::path& path : FilesOf(argv[i])) {
            Replay(path);
            ++count;
        }
    }
    std::printf("%zu files replayed\n", count);
    return count > 0 ? 0 : 1;  // a corpus that is not there would never fail
}
