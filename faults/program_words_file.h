#pragma once

#include <string>
#include <string_view>

#include "faults/program_words.h"

namespace zentro {

/// The words as a file, which docs/file-formats.md describes. UTF-8.
std::string ProgramWordsText(const ProgramWords& words);

struct LoadedProgramWords {
    ProgramWords words;
    std::string error;  ///< what is wrong with the file, with the line; empty: nothing
};

LoadedProgramWords ParseProgramWords(std::string_view text);

}  // namespace zentro
