#include <cstdlib>
#include <exception>
#include <filesystem>
#include <memory>
#include <new>
#include <string>
#include <system_error>
#include <vector>

#include "apps/zentroc/console.h"
#include "apps/zentroc/log_writers.h"
#include "apps/zentroc/options.h"
#include "apps/zentroc/outputs.h"
#include "apps/zentroc/room.h"
#include "compiler/paths.h"
#include "compiler/symbols_file.h"
#include "config/configuration.h"
#include "faults/program_words_file.h"
#include "faults/words_of_program.h"
#include "frontend/language_check.h"

namespace {

using namespace zentro;
namespace fs = std::filesystem;

/// Gathers the listing, so that its file is written whole or not at all.
class ListingText : public ListingSink {
  public:
    void AddCodeLine(std::string_view text) override {
        text_ += text;
        text_ += '\n';
    }
    const std::string& Text() const { return text_; }

  private:
    std::string text_;
};

/// The configuration file lies beside the program, or in the share folder of an installation.
std::string ShippedConfiguration(const char* programName) {
    constexpr const char* kFileName = "ZentroCompiler.cfg";
    std::error_code failed;
    fs::path program = fs::read_symlink("/proc/self/exe", failed);
    if (failed) program = programName;
    const fs::path folder = program.parent_path();
    const fs::path beside = folder / kFileName;
    if (fs::exists(beside, failed)) return beside.string();
    return (folder.parent_path() / "share" / "zentrocompiler" / kFileName).string();
}

/// Reads the language and tells what is wrong with it. False when it cannot be used.
bool LoadLanguage(const std::string& path, InstructionConfiguration& configuration) {
    if (const std::string problem = LoadInstructionConfig(path, configuration); !problem.empty()) {
        TellFailure(path + ": " + problem);
        return false;
    }
    bool isUsable = true;
    for (const LanguageFinding& finding : CheckLanguage(configuration)) {
        TellFailure(path + ": " + finding.text);
        isUsable = isUsable && !finding.spoilsPrograms;
    }
    return isUsable;
}

ProgramFiles FilesFor(const Options& options) {
    const fs::path source(options.sourceFile);
    const std::string folder = source.parent_path().string();
    ProgramFiles files;
    files.sourceDirectory = folder;
    files.sourceFileName = source.filename().string();
    files.includeDirectory = options.includeDirectory.value_or(folder);
    files.objectDirectory = options.outputDirectory.value_or(folder);
    files.objectFileName = ChangeExtension(files.sourceFileName, "obj");
    return files;
}

std::unique_ptr<OutputSink> MakeLog(const Options& options, const ProgramFiles& files,
                                    StandardOutput& output) {
    if (options.format == LogFormat::Json) return std::make_unique<JsonLog>(output, options.quiet);
    const bool inColour = output.IsTerminal() && std::getenv("NO_COLOR") == nullptr;
    return std::make_unique<TextLog>(output, files.sourceFileName, inColour, options.quiet);
}

void WriteExtras(const Options& options, const Compilation& compilation, const ListingText& listing,
                 StandardOutput& output, DiskWriter& writer) {
    if (options.listingFile == "-") {
        output.Write(listing.Text());
    } else if (!options.listingFile.empty()) {
        writer.Write(options.listingFile, listing.Text());
    }
    if (!options.symbolsFile.empty()) {
        writer.Write(options.symbolsFile, SymbolsFileText(compilation));
    }
    if (!options.debugInfoFile.empty()) {
        writer.Write(options.debugInfoFile, ProgramWordsText(WordsOf(compilation)));
    }
}

ExitStatus Compile(const Options& options, const InstructionConfiguration& configuration,
                   const std::string& configurationFile) {
    const ProgramFiles files = FilesFor(options);
    const std::vector<Output> outputs = OutputsFor(options, files);
    InputFiles inputs;
    inputs.Add(options.sourceFile);
    inputs.Add(configurationFile);
    if (const std::string refusal = RefusalOf(outputs, inputs); !refusal.empty()) {
        TellFailure(refusal);
        return ExitStatus::Failure;
    }
    StandardOutput output;
    const std::unique_ptr<OutputSink> log = MakeLog(options, files, output);
    ConsolePrompts prompts;
    DiskReader reader(inputs);
    DiskWriter writer(outputs, inputs);
    NoProgress progress;
    ListingText listing;
    // It is left to the system with the rest of the program's memory.
    auto* const compilation = new Compilation(
        configuration, Environment{*log, prompts, reader, progress}, RoomForCompilation());
    compilation->wantsAdvice = !options.noAdvice;
    bool succeeded = false;
    if (options.checkOnly) {
        succeeded = SyntaxCheck(*compilation, files);
    } else {
        ListingSink* sink = options.listingFile.empty() ? nullptr : &listing;
        succeeded = CompileSource(*compilation, files, writer, sink);
        if (succeeded) WriteExtras(options, *compilation, listing, output, writer);
    }
    const bool hasErrors = !succeeded || compilation->diagnostics.ErrorCount() > 0;
    if (const std::string problem = output.Finish(); !problem.empty()) {
        TellFailure("cannot write to standard output: " + problem);
        return ExitStatus::Failure;
    }
    if (reader.MainFileFailed() || writer.Failed()) return ExitStatus::Failure;
    return hasErrors ? ExitStatus::ProgramHasErrors : ExitStatus::Success;
}

int Main(int argc, char** argv) {
    ExitStatus status = ExitStatus::Success;
    const std::optional<Options> options = ParseOptions(argc, argv, status);
    if (!options) return static_cast<int>(status);
    InstructionConfiguration configuration;
    const std::string path =
        options->configurationFile ? *options->configurationFile : ShippedConfiguration(argv[0]);
    if (!LoadLanguage(path, configuration)) return static_cast<int>(ExitStatus::Failure);
    // Ends without tearing down what the system takes back at once.
    std::_Exit(static_cast<int>(Compile(*options, configuration, path)));
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return Main(argc, argv);
    } catch (const std::bad_alloc&) {
        TellFailure("there is not enough memory to compile this program");
    } catch (const std::exception& error) {
        TellFailure(error.what());
    }
    return static_cast<int>(ExitStatus::Failure);
}
