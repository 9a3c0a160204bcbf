#include "desktop/live_check.h"

#include <chrono>

#include "compiler/editor_check.h"
#include "compiler/paths.h"

namespace zentro {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds kRest = 300ms;
/// A program that takes longer to check is checked less often.
constexpr std::size_t kManyLines = 20000;
constexpr std::chrono::milliseconds kLongRest = 1000ms;

class MessageCollector : public OutputSink {
  public:
    explicit MessageCollector(std::map<std::string, std::vector<LineMessage>>& messages)
        : messages_(messages) {}

    void Write(std::string_view, LogColour, const PostedMessage* message) override {
        if (message == nullptr || message->place.fileName.empty()) return;
        if (message->severity != Severity::Error && message->severity != Severity::Warning) return;
        messages_[PathOf(message->place.pathName, message->place.fileName)].push_back(
            {message->place.sourceLineNo, message->severity,
             QString::fromStdString(message->text)});
    }

  private:
    std::map<std::string, std::vector<LineMessage>>& messages_;
};

/// A check while typing must not interrupt: a missing file counts as such, and boxes are for the
/// compile that the user asks for.
class NoPrompts : public Prompts {
  public:
    void ShowMessage(std::string_view) override {}
    std::optional<std::string> FindMissingFile(std::string_view, std::string_view,
                                               std::string_view) override {
        return std::nullopt;
    }
};

class OpenTextReader : public FileReader {
  public:
    explicit OpenTextReader(const TextProvider& openTexts) : openTexts_(openTexts) {}

    FileContent Read(const std::string& path) override {
        if (std::optional<std::string> text = openTexts_(path)) {
            return {FileContent::Status::Read, *std::move(text), {}};
        }
        return ReadWholeFile(path);
    }

  private:
    const TextProvider& openTexts_;
};

/// What a line that includes a file with mistakes is marked with.
QString IncludedText(const IncludedMistakes& mistakes) {
    const LineXref& place = mistakes.first.place;
    const QString first = QString::fromStdString(place.fileName);
    const QString line = QString::number(place.sourceLineNo);
    const QString text = QString::fromStdString(mistakes.first.text);
    const bool hasErrors = mistakes.errors > 0;
    const int count = hasErrors ? mistakes.errors : mistakes.warnings;
    if (count == 1) {
        const QString one = hasErrors ? LiveCheck::tr("There is a mistake in %1, line %2: %3")
                                      : LiveCheck::tr("There is a warning in %1, line %2: %3");
        return one.arg(first, line, text);
    }
    const QString several =
        hasErrors ? LiveCheck::tr("There are %1 mistakes in %2, the first one in %3, line %4: %5")
                  : LiveCheck::tr("There are %1 warnings in %2, the first one in %3, line %4: %5");
    return several.arg(QString::number(count), QString::fromStdString(mistakes.fileName), first,
                       line, text);
}

class NoProgress : public Progress {
  public:
    void LetEventsRun() override {}
};

}  // namespace

CheckResult CheckProgram(const InstructionConfiguration& configuration, const ProgramFiles& program,
                         const TextProvider& openTexts) {
    CheckResult result;
    MessageCollector output(result.messages);
    NoPrompts prompts;
    OpenTextReader files(openTexts);
    NoProgress progress;
    Compilation compilation(configuration, {output, prompts, files, progress});
    for (const IncludedMistakes& mistakes : CheckForEditor(compilation, program)) {
        result.messages[PathOf(mistakes.place.pathName, mistakes.place.fileName)].push_back(
            {mistakes.place.sourceLineNo, mistakes.first.severity, IncludedText(mistakes)});
    }
    result.succeeded = compilation.diagnostics.ErrorCount() == 0;
    result.names = NamesOf(compilation);
    result.lines = compilation.sourceLines.size();
    return result;
}

LiveCheck::LiveCheck(const InstructionConfiguration& configuration, TextProvider openTexts,
                     QObject* parent)
    : QObject(parent), configuration_(configuration), openTexts_(std::move(openTexts)) {
    rest_.setSingleShot(true);
    connect(&rest_, &QTimer::timeout, this, &LiveCheck::CheckNow);
}

void LiveCheck::SetLiveCheck(bool on) {
    if (on == isOn_) return;
    isOn_ = on;
    if (on) return TextChanged();
    rest_.stop();
    result_ = {};
    emit Checked();
}

void LiveCheck::SetProgram(const ProgramFiles& program) {
    const bool isOther = program.sourceDirectory != program_.sourceDirectory ||
                         program.sourceFileName != program_.sourceFileName;
    program_ = program;
    if (isOther) names_.clear();
    TextChanged();
}

void LiveCheck::TextChanged() {
    if (isOn_) rest_.start(result_.lines > kManyLines ? kLongRest : kRest);
}

void LiveCheck::CheckNow() {
    rest_.stop();
    if (!isOn_) return;
    result_ = program_.sourceFileName.empty() ? CheckResult{}
                                              : CheckProgram(configuration_, program_, openTexts_);
    names_ = result_.succeeded ? result_.names : MergeNames(result_.names, names_);
    emit Checked();
}

std::vector<LineMessage> LiveCheck::MessagesOf(const QString& folder,
                                               const QString& fileName) const {
    const auto found = result_.messages.find(PathOf(folder.toStdString(), fileName.toStdString()));
    return found == result_.messages.end() ? std::vector<LineMessage>{} : found->second;
}

}  // namespace zentro
