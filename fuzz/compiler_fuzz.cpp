// Arbitrary text as a program. If no error was posted, the object file is whole: every line of it
// encodes as many bytes as its object line takes, and the bytes of all lines add up to the address
// after the last one.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>

#include "compiler/compile.h"
#include "compiler/editor_check.h"
#include "compiler/object_file.h"
#include "config/configuration.h"

namespace {

using namespace zentro;

class NoOutput : public OutputSink {
  public:
    void Write(std::string_view, LogColour, const PostedMessage*) override {}
};

class NoPrompts : public Prompts {
  public:
    void ShowMessage(std::string_view text) override {
        // A defect of the program, not of its input, speaks in this way.
        if (text.find("Compiler Error") != std::string_view::npos) std::abort();
    }
    std::optional<std::string> FindMissingFile(std::string_view, std::string_view,
                                               std::string_view) override {
        return std::nullopt;
    }
};

/// One file, under every name: a program that includes anything includes itself.
class OneFile : public FileReader {
  public:
    explicit OneFile(std::string bytes) : bytes_(std::move(bytes)) {}
    FileContent Read(const std::string&) override {
        return {FileContent::Status::Read, bytes_, {}};
    }

  private:
    std::string bytes_;
};

class NoProgress : public Progress {
  public:
    void LetEventsRun() override {}
};

class LastFile : public FileWriter {
  public:
    std::string Write(const std::string&, std::string_view bytes) override {
        content = bytes;
        return {};
    }
    std::string content;
};

class NoListing : public ListingSink {
  public:
    void AddCodeLine(std::string_view) override {}
};

const InstructionConfiguration& Language() {
    static const InstructionConfiguration* const kLanguage = [] {
        auto* configuration = new InstructionConfiguration;
        const std::string problem = LoadInstructionConfig(ZENTRO_SHIPPED_CONFIG, *configuration);
        if (!problem.empty()) {
            std::fprintf(stderr, "%s\n", problem.c_str());
            std::abort();
        }
        return configuration;
    }();
    return *kLanguage;
}

void CheckObjectFile(const Compilation& compilation, const std::string& content) {
    std::int32_t bytes = 0;
    for (const ObjectLine& line : compilation.objectLines) {
        if (line.address != bytes) std::abort();
        bytes += static_cast<std::int32_t>(line.Size());
        if (line.IsTable()) continue;
        const ObjectCodeText code(line);
        const auto numbers = 1 + std::count(code.View().begin(), code.View().end(), ',');
        if (numbers != line.byteCount) std::abort();
    }
    const auto separators =
        std::count_if(content.begin(), content.end(), [](char c) { return c == ',' || c == '\n'; });
    if (separators != bytes) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    NoOutput output;
    NoPrompts prompts;
    OneFile files(std::string(data, data + size));
    NoProgress progress;
    LastFile writer;
    NoListing listing;
    Compilation compilation(Language(), Environment{output, prompts, files, progress});
    const ProgramFiles program{"", "program.txt", "", "", "program.obj"};
    const bool written = CompileSource(compilation, program, writer, &listing);
    if (written && compilation.diagnostics.ErrorCount() == 0) {
        CheckObjectFile(compilation, writer.content);
    }
    Compilation edited(Language(), Environment{output, prompts, files, progress});
    CheckForEditor(edited, program);
    return 0;
}
