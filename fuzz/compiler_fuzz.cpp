// Arbitrary text as a program, in the language as shipped or in a changed one. If no error was
// posted, the object file is whole: every line of it encodes as many bytes as its object line
// takes, and the bytes of all lines add up to the address after the last one.
//
// What stands before a byte 1E, if there is one, changes the language: records as in the
// configuration file, which come before those as shipped and take the place of those with the same
// token. A token behind a "-" takes the record away.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "compiler/compile.h"
#include "compiler/editor_check.h"
#include "compiler/object_file.h"
#include "config/configuration.h"
#include "config/text.h"
#include "frontend/language_check.h"

namespace {

using namespace zentro;

class NoOutput : public OutputSink {
  public:
    void Write(std::string_view, LogColour, const PostedMessage*) override {}
};

class NoPrompts : public Prompts {
  public:
    explicit NoPrompts(bool isLanguageSound) : isLanguageSound_(isLanguageSound) {}
    void ShowMessage(std::string_view text) override {
        // A defect of the program, not of its input, speaks in this way.
        if (text.find("Compiler Error") != std::string_view::npos) std::abort();
        // A defect of the language has been told before.
        const bool isOfLanguage = text.find("Compiler error") != std::string_view::npos ||
                                  text.find("Could not") != std::string_view::npos;
        if (isOfLanguage && isLanguageSound_) std::abort();
    }
    std::optional<std::string> FindMissingFile(std::string_view, std::string_view,
                                               std::string_view) override {
        return std::nullopt;
    }

  private:
    bool isLanguageSound_;
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

const InstructionConfiguration& ShippedLanguage() {
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

bool IsTakenAway(const InstructionConfiguration& configuration, const std::string& token) {
    const auto& entries = configuration.commands.Entries();
    return std::ranges::any_of(entries, [&](const Command& entry) {
        return entry.token.starts_with('-') && EqualsIgnoreCase(entry.token.substr(1), token);
    });
}

/// The shipped language with the changes.
void ChangeLanguage(std::string changes, InstructionConfiguration& configuration) {
    ParseInstructionConfig(std::move(changes), configuration);
    const InstructionConfiguration& shipped = ShippedLanguage();
    std::vector<const Command*> kept;
    for (const Command& entry : shipped.commands.Entries()) {
        if (!IsTakenAway(configuration, entry.token)) kept.push_back(&entry);
    }
    for (const MessageCode code : MessageCodes()) {
        const ErrorMessage* message = shipped.messages.Find(code);
        if (message != nullptr && !IsTakenAway(configuration, message->token))
            configuration.messages.AddErrorMessage(*message);
    }
    for (const Command* entry : kept)
        configuration.commands.AddCommand(*entry);
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
    std::string text(data, data + size);
    InstructionConfiguration changed;
    const InstructionConfiguration* language = &ShippedLanguage();
    if (const std::size_t end = text.find('\x1E'); end != std::string::npos) {
        ChangeLanguage(text.substr(0, end), changed);
        text.erase(0, end + 1);
        language = &changed;
    }
    const std::vector<LanguageFinding> findings = CheckLanguage(*language);
    if (findings.empty() != TellFindings(findings).empty()) std::abort();
    NoOutput output;
    NoPrompts prompts(findings.empty());
    OneFile files(std::move(text));
    NoProgress progress;
    LastFile writer;
    NoListing listing;
    Compilation compilation(*language, Environment{output, prompts, files, progress});
    const ProgramFiles program{"", "program.txt", "", "", "program.obj"};
    const bool written = CompileSource(compilation, program, writer, &listing);
    if (written && compilation.diagnostics.ErrorCount() == 0) {
        CheckObjectFile(compilation, writer.content);
    }
    Compilation edited(*language, Environment{output, prompts, files, progress});
    CheckForEditor(edited, program);
    return 0;
}
