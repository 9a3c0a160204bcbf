#pragma once

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/support/compile_fixture.h"

namespace zentro {

/// The object file of a source text.
inline std::string Compiled(const std::string& source) {
    test::Program program(source);
    EXPECT_TRUE(program.Compile()) << program.output.log;
    return program.object.text;
}

/// The object file of examples/NAME.txt.
inline std::string CompiledExample(const std::string& name) {
    return Compiled(test::ReadFile(std::string(ZENTRO_EXAMPLES_FOLDER) + "/" + name + ".txt"));
}

/// An object file with these bytes, followed by zeros up to `size`.
inline std::string ObjectOf(const std::vector<int>& bytes, std::size_t size = 0) {
    std::string text;
    for (int byte : bytes)
        text += std::to_string(byte) + "\r\n";
    for (std::size_t at = bytes.size(); at < size; ++at)
        text += "0\r\n";
    return text;
}

}  // namespace zentro
