#include "apps/zentroc/outputs.h"

#include <filesystem>
#include <system_error>

#include "compiler/paths.h"

namespace zentro {

namespace {

namespace fs = std::filesystem;

/// A device or a pipe takes whatever is written to it, from any number of outputs.
bool IsFile(const std::string& path) {
    std::error_code unknown;
    const fs::file_status status = fs::status(path, unknown);
    return !fs::exists(status) || fs::is_regular_file(status);
}

bool AreOneFile(const std::string& one, const std::string& other) {
    std::error_code unknown;
    if (fs::equivalent(one, other, unknown)) return true;
    // Neither needs to be there yet.
    return fs::weakly_canonical(fs::absolute(one, unknown), unknown) ==
           fs::weakly_canonical(fs::absolute(other, unknown), unknown);
}

}  // namespace

std::vector<Output> OutputsFor(const Options& options, const ProgramFiles& files) {
    std::vector<Output> outputs;
    if (options.checkOnly) return outputs;
    outputs.push_back({"the object file", PathOf(files.objectDirectory, files.objectFileName),
                       "give the source file another extension than .obj"});
    if (!options.listingFile.empty() && options.listingFile != "-")
        outputs.push_back({"the listing", options.listingFile, "choose another name for it"});
    if (!options.symbolsFile.empty())
        outputs.push_back(
            {"the file of variables", options.symbolsFile, "choose another name for it"});
    if (!options.debugInfoFile.empty())
        outputs.push_back(
            {"the debug information", options.debugInfoFile, "choose another name for it"});
    return outputs;
}

std::string RefusalOf(const std::vector<Output>& outputs, const InputFiles& inputs) {
    for (const Output& output : outputs) {
        if (const auto input = inputs.ReplacedBy(output.path))
            return output.what + " would replace the source file '" + *input +
                   "': " + output.wayOut;
    }
    for (std::size_t i = 0; i < outputs.size(); ++i) {
        for (std::size_t k = 0; k < i; ++k) {
            if (!IsFile(outputs[i].path) || !AreOneFile(outputs[i].path, outputs[k].path)) continue;
            return outputs[i].what + " would replace " + outputs[k].what + ", '" + outputs[k].path +
                   "': " + outputs[i].wayOut;
        }
    }
    return {};
}

}  // namespace zentro
