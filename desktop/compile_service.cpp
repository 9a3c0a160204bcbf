#include "desktop/compile_service.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QScopedValueRollback>
#include <filesystem>
#include <utility>

#include "compiler/paths.h"
#include "config/file.h"
#include "desktop/program_files.h"

namespace zentro {

namespace {

/// Passes the log of a run on and keeps its messages. A compilation lives longer than the window
/// that shows its log.
class RunOutput : public OutputSink {
  public:
    void Write(std::string_view text, LogColour colour, const PostedMessage* message) override {
        if (message != nullptr) messages.Add(*message);
        if (present != nullptr) present->Write(text, colour, message);
    }
    void Clear() override {
        if (present != nullptr) present->Clear();
    }
    void Beep() override {
        if (present != nullptr) present->Beep();
    }

    OutputSink* present = nullptr;
    MessageCollector messages;
};

class DiskReader : public FileReader {
  public:
    FileContent Read(const std::string& path) override { return ReadWholeFile(path); }
};

/// Tells the reason of a failure, which the log has no room for.
class DiskWriter : public FileWriter {
  public:
    DiskWriter(Prompts& prompts, std::string& written) : prompts_(prompts), written_(written) {}

    std::string Write(const std::string& path, std::string_view bytes) override {
        MendUnfinishedWrites(std::filesystem::path(path).parent_path().string());
        std::string problem = WriteWholeFile(path, bytes);
        if (problem.empty()) written_ = bytes;
        if (!problem.empty())
            prompts_.ShowMessage("The object file '" + path + "' cannot be written: " + problem);
        return problem;
    }

  private:
    Prompts& prompts_;
    std::string& written_;
};

/// Keeps the windows alive. What the user types and clicks waits for the end of the run.
class EventProgress : public Progress {
  public:
    EventProgress() { sinceLast_.start(); }

    void LetEventsRun() override {
        constexpr qint64 kPause = 20;  // milliseconds; the eye sees no more than this
        if (sinceLast_.elapsed() < kPause) return;
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        sinceLast_.start();
    }

  private:
    QElapsedTimer sinceLast_;
};

}  // namespace

struct CompiledProgram::Outside {
    RunOutput output;
    DiskReader reader;
    EventProgress progress;
};

CompiledProgram::CompiledProgram() : outside(std::make_unique<Outside>()) {}

CompiledProgram::~CompiledProgram() = default;

CompileService::CompileService(const InstructionConfiguration& configuration,
                               const SettingsStore& settings, Programs& programs, Prompts& prompts,
                               QObject* parent)
    : QObject(parent),
      configuration_(configuration),
      settings_(settings),
      programs_(programs),
      prompts_(prompts) {}

std::shared_ptr<const CompiledProgram> CompileService::Compile(const OpenFile& file,
                                                               OutputSink& output,
                                                               ListingSink* listing) {
    const ProgramFiles paths = ProgramFilesOf(file, settings_);
    if (WouldOverwriteSource(paths)) {
        prompts_.ShowMessage("The object file would replace the source file '" +
                             paths.sourceFileName +
                             "'. Save it with another extension than .obj first.");
        return nullptr;
    }
    const bool listed = AsBoolean(settings_.GetSetting(SettingNumber::ShowObjectCode));
    auto program = Run(file, paths, output, [&](Compilation& compilation, FileWriter& writer) {
        return CompileSource(compilation, paths, writer, listed ? listing : nullptr);
    });
    if (program != nullptr) programs_.SetCompiled(program);
    return program;
}

bool CompileService::Check(const OpenFile& file, OutputSink& output) {
    const ProgramFiles paths = ProgramFilesOf(file, settings_);
    const auto program = Run(file, paths, output, [&](Compilation& compilation, FileWriter&) {
        return SyntaxCheck(compilation, paths);
    });
    return program != nullptr && program->succeeded;
}

std::shared_ptr<CompiledProgram> CompileService::Run(const OpenFile& file,
                                                     const ProgramFiles& paths, OutputSink& output,
                                                     const RunStages& runStages) {
    if (isRunning_) {
        prompts_.ShowMessage("Another compile is not finished yet.");
        return nullptr;
    }
    const QScopedValueRollback running(isRunning_, true);
    auto program = std::make_shared<CompiledProgram>();
    program->root = file.key;
    program->name = file.name;
    program->objectFile =
        QString::fromStdString(PathOf(paths.objectDirectory, paths.objectFileName));
    RunOutput& log = program->outside->output;
    // What is on the disk when the run begins; the windows cannot save meanwhile.
    std::map<QString, Revision> saved;
    for (const OpenFile& open : programs_.Files())
        saved[open.key] = open.disk == DiskState::Same ? open.savedRevision : kOtherText;
    program->compilation = std::make_unique<Compilation>(
        configuration_,
        Environment{log, prompts_, program->outside->reader, program->outside->progress});
    {
        const QScopedValueRollback<OutputSink*> present(log.present, &output);
        DiskWriter writer(prompts_, program->objectText);
        program->succeeded = runStages(*program->compilation, writer) && !log.messages.HasErrors();
    }
    ProgramReport report =
        log.messages.Report(file.key, *program->compilation, saved, program->succeeded);
    program->texts = report.texts;
    programs_.SetReport(std::move(report));
    return program;
}

}  // namespace zentro
