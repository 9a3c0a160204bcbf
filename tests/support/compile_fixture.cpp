#include "tests/support/compile_fixture.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

#include "config/text.h"

namespace zentro::test {

namespace {

const ProgramFiles kFiles{"src", "main.txt", "src", "out", "main.obj"};

bool IsMistake(const PostedMessage& message) {
    return message.severity == Severity::Error || message.severity == Severity::Warning;
}

std::string CodeAndPlace(const PostedMessage& message) {
    const LineXref& place = message.place;
    const std::string line = ":" + std::to_string(place.sourceLineNo);
    return MessageCodeText(message.code) +
           (place.sourceLineNo == 0 ? "" : " " + place.fileName + line);
}

/// The comment column of a listing: 40 characters, or 37 and "...".
std::string ShownComment(std::string_view comment) {
    const std::string whole = ";" + std::string(comment);
    return whole.size() <= 40 ? whole : whole.substr(0, 37) + "...";
}

/// An object line by its line of the listing: 12 characters of address, 21 of label, then 29 of
/// instruction, the arguments, three tabs and the comment; or 25 of value and the comment.
std::string Describe(const ObjectLine& line, const std::string& listed,
                     std::string_view usualComment) {
    std::string text = line.label == nullptr ? "" : std::string(line.label->name) + ": ";
    std::string comment;
    if (line.purpose == ObjectPurpose::VariableLocation) {
        text += Trim(listed.substr(33, 25));
        comment = listed.substr(58);
    } else {
        const std::size_t tabs = listed.find("\t\t\t");
        const std::string arguments = listed.substr(62, tabs - 62);
        text += line.OpcodeName();
        if (arguments.find_first_not_of(' ') != std::string::npos) text += " " + arguments;
        comment = listed.substr(tabs + 3);
    }
    if (comment != ShownComment(usualComment)) text += " " + comment;
    return text;
}

void AppendPiece(std::string& text, const std::string& piece) {
    if (!text.empty()) text += " | ";
    text += piece;
}

}  // namespace

const InstructionConfiguration& ShippedLanguage() {
    static const auto* const language = [] {
        auto* loaded = new InstructionConfiguration;
        EXPECT_EQ(LoadInstructionConfig(ZENTRO_SHIPPED_CONFIG, *loaded), "");
        return loaded;
    }();
    return *language;
}

std::string ReadFile(const std::string& path) {
    const bool isAbsolute = path.starts_with('/');
    std::ifstream stream(isAbsolute ? path : ZENTRO_TESTS_FOLDER "/" + path, std::ios::binary);
    EXPECT_TRUE(stream.is_open()) << path;
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::vector<std::string> Split(std::string_view text, char separator) {
    std::vector<std::string> pieces;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(separator), text.size());
        pieces.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return pieces;
}

FileContent MemoryFiles::Read(const std::string& path) {
    asked.push_back(path);
    if (unreadable.contains(path)) return {FileContent::Status::Failed, {}, "Permission denied"};
    const auto found = texts.find(path);
    if (found == texts.end()) return {FileContent::Status::NotFound, {}, "No such file"};
    return {FileContent::Status::Read, found->second, {}};
}

void CapturedOutput::Write(std::string_view text, LogColour colour, const PostedMessage* message) {
    log += text;
    pieces.emplace_back(text, colour);
    if (message != nullptr) messages.push_back(*message);
}

std::optional<std::string> ScriptedPrompts::FindMissingFile(std::string_view title,
                                                            std::string_view directory,
                                                            std::string_view fileName) {
    questions.push_back(std::string(title) + "|" + std::string(directory) + "|" +
                        std::string(fileName));
    if (answers.empty()) return std::nullopt;
    std::string answer = answers.front();
    answers.erase(answers.begin());
    return answer;
}

std::string CapturedFile::Write(const std::string& to, std::string_view bytes) {
    if (!problem.empty()) return problem;
    path = to;
    text = bytes;
    return {};
}

Program::Program(std::string mainText, const InstructionConfiguration& language)
    : compilation(language, Environment{output, prompts, files, progress}) {
    files.texts["src/main.txt"] = std::move(mainText);
}

Program& Program::WithFile(const std::string& name, std::string text) {
    files.texts["src/" + name] = std::move(text);
    return *this;
}

bool Program::Compile() {
    return CompileSource(compilation, kFiles, object, &listing);
}

bool Program::Check() {
    return SyntaxCheck(compilation, kFiles);
}

std::vector<IncludedMistakes> Program::CheckForEditor() {
    return zentro::CheckForEditor(compilation, kFiles);
}

std::vector<std::string> Program::Messages() const {
    std::vector<std::string> texts;
    for (const PostedMessage& message : output.messages) {
        if (IsMistake(message)) texts.push_back(CodeAndPlace(message));
    }
    return texts;
}

std::vector<std::string> Program::Advice() const {
    std::vector<std::string> texts;
    for (const PostedMessage& message : output.messages) {
        if (message.severity == Severity::Advice) texts.push_back(CodeAndPlace(message));
    }
    return texts;
}

std::string Program::TextOf(std::string_view code) const {
    for (const PostedMessage& message : output.messages) {
        if (IsMistake(message) && MessageCodeText(message.code) == code) return message.text;
    }
    return {};
}

std::string Program::Code(int firstLineNo, int lastLineNo) const {
    std::string text;
    std::size_t listed = 0;
    for (const ObjectLine& line : compilation.objectLines) {
        const std::size_t i = listed;
        listed += line.LineCount();
        if (line.sourceLineNo < firstLineNo || line.sourceLineNo > lastLineNo) continue;
        const SourceLine& source = compilation.GetSourceLine(line.sourceLineNo);
        AppendPiece(text, Describe(line, listing.lines.at(i), source.parsedLine));
    }
    return text;
}

std::string Program::DataArea() const {
    std::string text;
    std::size_t listed = 0;
    for (const ObjectLine& line : compilation.objectLines) {
        for (std::size_t i = 0; i < line.LineCount(); ++i, ++listed) {
            if (line.purpose == ObjectPurpose::Instruction) continue;
            std::string piece = Describe(line, listing.lines.at(listed), "");
            if (i > 0) piece.insert(line.label->name.size(), std::to_string(i));
            AppendPiece(text, piece);
        }
    }
    return text;
}

}  // namespace zentro::test
