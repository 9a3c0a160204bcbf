#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/compile_fixture.h"

namespace zentro::test {

/// The names of the examples, without ".txt".
inline std::vector<std::string> ExampleNames() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(ZENTRO_EXAMPLES_FOLDER)) {
        if (entry.path().extension() == ".txt") names.push_back(entry.path().stem());
    }
    return names;
}

/// An example, compiled. Fails the test when it has errors.
inline std::unique_ptr<Program> CompileExample(const std::string& name) {
    namespace fs = std::filesystem;
    const fs::path folder = ZENTRO_EXAMPLES_FOLDER;
    auto program = std::make_unique<Program>(ReadFile(folder / (name + ".txt")));
    if (fs::is_directory(folder / name)) {
        for (const auto& entry : fs::directory_iterator(folder / name)) {
            const fs::path& path = entry.path();
            program->WithFile(name + "/" + path.filename().string(), ReadFile(path));
        }
    }
    EXPECT_TRUE(program->Compile()) << name << "\n" << program->output.log;
    return program;
}

}  // namespace zentro::test
