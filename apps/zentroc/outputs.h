#pragma once

#include <string>
#include <vector>

#include "apps/zentroc/options.h"
#include "compiler/compile.h"
#include "config/input_files.h"

namespace zentro {

/// A file that the program is to write.
struct Output {
    std::string what;  ///< "the listing"
    std::string path;
    std::string wayOut;  ///< what to do when it may not be written
};

/// The files that the options ask for, the object file first; none when they ask for a check.
std::vector<Output> OutputsFor(const Options& options, const ProgramFiles& files);

/// Why the outputs may not be written: one would replace a file that is read, or another output.
/// Empty when they may.
std::string RefusalOf(const std::vector<Output>& outputs, const InputFiles& inputs);

}  // namespace zentro
