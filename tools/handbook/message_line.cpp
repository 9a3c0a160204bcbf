#include "tools/handbook/message_line.h"

#include <optional>

#include "compiler/compile.h"

namespace zentro {

namespace {

constexpr std::string_view kMainFile = "program.txt";

/// Keeps the line of the first message with the code.
struct MessageFinder : OutputSink {
    explicit MessageFinder(std::string_view wanted) : code(wanted) {}

    void Write(std::string_view, LogColour, const PostedMessage* message) override {
        if (line != 0 || message == nullptr || MessageCodeText(message->code) != code) return;
        if (message->place.fileName == kMainFile) line = message->place.sourceLineNo;
    }

    std::string_view code;
    int line = 0;
};

struct NoPrompts : Prompts {
    void ShowMessage(std::string_view) override {}
    std::optional<std::string> FindMissingFile(std::string_view, std::string_view,
                                               std::string_view) override {
        return std::nullopt;
    }
};

struct FilesInMemory : FileReader {
    explicit FilesInMemory(std::map<std::string, std::string> all) : texts(std::move(all)) {}

    FileContent Read(const std::string& path) override {
        const auto found = texts.find(path);
        if (found == texts.end()) return {FileContent::Status::NotFound, {}, "No such file"};
        return {FileContent::Status::Read, found->second, {}};
    }

    std::map<std::string, std::string> texts;
};

struct NoProgress : Progress {
    void LetEventsRun() override {}
};

struct NoFile : FileWriter {
    std::string Write(const std::string&, std::string_view) override { return {}; }
};

}  // namespace

int LineOfMessage(const InstructionConfiguration& language, const std::string& program,
                  const std::map<std::string, std::string>& files, std::string_view code) {
    MessageFinder finder(code);
    NoPrompts prompts;
    NoProgress progress;
    NoFile writer;
    FilesInMemory reader(files);
    const std::string mainFile(kMainFile);
    reader.texts[mainFile] = program;
    Compilation compilation(language, {finder, prompts, reader, progress});
    CompileSource(compilation, {{}, mainFile, {}, {}, "program.obj"}, writer, nullptr);
    return finder.line;
}

}  // namespace zentro
