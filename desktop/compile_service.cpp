#include "desktop/compile_service.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QScopedValueRollback>
#include <filesystem>
#include <utility>

#include "compiler/paths.h"
#include "config/file.h"
#include "config/input_files.h"
#include "desktop/live_check.h"
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

/// Remembers what it has read.
class DiskReader : public FileReader {
  public:
    DiskReader(Disk& disk, InputFiles& inputs)
        : reader_(disk, Patience::WhileWanted), inputs_(inputs) {}

    FileContent Read(const std::string& path) override {
        FileContent content = reader_.Read(path);
        inputs_.Add(path, content);
        return content;
    }

  private:
    PatientReader reader_;
    InputFiles& inputs_;
};

/// Tells the reason of a failure, which the log has no room for.
class DiskWriter : public FileWriter {
  public:
    DiskWriter(Disk& disk, Prompts& prompts, const InputFiles& inputs, std::string& written)
        : disk_(disk), prompts_(prompts), inputs_(inputs), written_(written) {}

    std::string Write(const std::string& path, std::string_view bytes) override {
        const auto answer = disk_.Ask(QString::fromStdString(path), Patience::WhileWanted,
                                      [path, inputs = inputs_, text = std::string(bytes)] {
                                          return Write(path, inputs, text);
                                      });
        const Outcome outcome = answer.value_or(Outcome{{}, kNoAnswer});
        if (outcome.replaced) {
            prompts_.ShowMessage(outcome.problem);
        } else if (!outcome.problem.empty()) {
            prompts_.ShowMessage("The object file '" + path +
                                 "' cannot be written: " + outcome.problem);
        } else {
            written_ = bytes;
        }
        return outcome.problem;
    }

  private:
    struct Outcome {
        std::optional<std::string> replaced;  ///< a source that the object file would destroy
        std::string problem;
    };

    static Outcome Write(const std::string& path, const InputFiles& inputs,
                         const std::string& text) {
        if (auto source = inputs.ReplacedBy(path)) {
            std::string problem = "The object file '" + path + "' would replace the source file '" +
                                  *source +
                                  "', which the program includes. Give one of them another name.";
            return {std::move(source), std::move(problem)};
        }
        MendUnfinishedWrites(std::filesystem::path(path).parent_path().string());
        return {{}, WriteWholeFile(path, text)};
    }

    Disk& disk_;
    Prompts& prompts_;
    const InputFiles& inputs_;
    std::string& written_;
};

/// Keeps the object code of a run that leaves the disk alone.
class MemoryWriter : public FileWriter {
  public:
    explicit MemoryWriter(std::string& written) : written_(written) {}

    std::string Write(const std::string&, std::string_view bytes) override {
        written_ = bytes;
        return {};
    }

  private:
    std::string& written_;
};

/// Of a run that asks nothing: a file that is missing stays missing, and a failure is told.
class UnaskedPrompts : public Prompts {
  public:
    explicit UnaskedPrompts(Prompts& prompts) : prompts_(prompts) {}

    void ShowMessage(std::string_view text) override { prompts_.ShowMessage(text); }
    std::optional<std::string> FindMissingFile(std::string_view, std::string_view,
                                               std::string_view) override {
        return std::nullopt;
    }

  private:
    Prompts& prompts_;
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
    InputFiles inputs;
    std::unique_ptr<FileReader> reader;
    std::unique_ptr<Prompts> unasked;  ///< null: the user is asked
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
    const auto overwrites = programs_.FileDisk().Ask(
        file.Path(), Patience::WhileWanted, [paths] { return WouldOverwriteSource(paths); });
    if (!overwrites) {
        prompts_.ShowMessage("'" + paths.sourceFileName + "' was not compiled. " + kNoAnswer + '.');
        return nullptr;
    }
    if (*overwrites) {
        prompts_.ShowMessage("The object file would replace the source file '" +
                             paths.sourceFileName +
                             "'. Save it with another extension than .obj first.");
        return nullptr;
    }
    auto program =
        Run(file, Texts::Saved, output, [&](Compilation& compilation, CompiledProgram& made) {
            DiskWriter writer(programs_.FileDisk(), prompts_, made.outside->inputs,
                              made.objectText);
            return CompileSource(compilation, paths, writer, Wanted(listing));
        });
    if (program != nullptr) programs_.SetCompiled(program);
    return program;
}

std::shared_ptr<const CompiledProgram> CompileService::CompileTexts(const OpenFile& file,
                                                                    OutputSink& output,
                                                                    ListingSink* listing) {
    return Run(file, Texts::InEditors, output,
               [&](Compilation& compilation, CompiledProgram& made) {
                   MemoryWriter writer(made.objectText);
                   return CompileSource(compilation, ProgramFilesOf(file, settings_), writer,
                                        Wanted(listing));
               });
}

bool CompileService::Check(const OpenFile& file, OutputSink& output) {
    const auto program =
        Run(file, Texts::Saved, output, [&](Compilation& compilation, CompiledProgram&) {
            return SyntaxCheck(compilation, ProgramFilesOf(file, settings_));
        });
    return program != nullptr && program->succeeded;
}

ListingSink* CompileService::Wanted(ListingSink* listing) const {
    return AsBoolean(settings_.GetSetting(SettingNumber::ShowObjectCode)) ? listing : nullptr;
}

/// A run ends with the first stage that has errors; the marks tell all mistakes of the texts as
/// they stand. What only a later stage finds is in the run's own report.
ProgramReport CompileService::WithAllMistakes(ProgramReport report, const OpenFile& file) const {
    ProgramReport checked = CheckProgram(configuration_, file, settings_, programs_);
    return checked.succeeded ? std::move(report) : std::move(checked);
}

/// Which texts of the open files a run reads that begins now; the windows cannot save or edit
/// meanwhile.
std::map<QString, Revision> CompileService::RevisionsOf(Texts texts) const {
    std::map<QString, Revision> revisions;
    for (const OpenFile& open : programs_.Files()) {
        const Revision saved = open.disk == DiskState::Same ? open.savedRevision : kOtherText;
        revisions[open.key] = texts == Texts::InEditors ? open.revision : saved;
    }
    return revisions;
}

std::shared_ptr<CompiledProgram> CompileService::Run(const OpenFile& file, Texts texts,
                                                     OutputSink& output,
                                                     const RunStages& runStages) {
    if (isRunning_) {
        prompts_.ShowMessage("Another compile is not finished yet.");
        return nullptr;
    }
    const QScopedValueRollback running(isRunning_, true);
    auto program = std::make_shared<CompiledProgram>();
    CompiledProgram::Outside& outside = *program->outside;
    program->root = file.key;
    program->name = file.name;
    const ProgramFiles paths = ProgramFilesOf(file, settings_);
    program->objectFile =
        QString::fromStdString(PathOf(paths.objectDirectory, paths.objectFileName));
    if (texts == Texts::InEditors) {
        outside.reader = std::make_unique<OpenTextReader>(programs_, Patience::WhileWanted);
        outside.unasked = std::make_unique<UnaskedPrompts>(prompts_);
    } else {
        outside.reader = std::make_unique<DiskReader>(programs_.FileDisk(), outside.inputs);
    }
    const std::map<QString, Revision> read = RevisionsOf(texts);
    Prompts& prompts = outside.unasked == nullptr ? prompts_ : *outside.unasked;
    program->compilation = std::make_unique<Compilation>(
        configuration_, Environment{outside.output, prompts, *outside.reader, outside.progress});
    program->compilation->wantsAdvice = FlagIsOn(settings_, SettingNumber::ShowAdvice);
    const MessageCollector& messages = outside.output.messages;
    {
        const QScopedValueRollback<OutputSink*> present(outside.output.present, &output);
        program->succeeded = runStages(*program->compilation, *program) && !messages.HasErrors();
    }
    ProgramReport report = messages.Report(file.key, *program->compilation, KeysOf(programs_), read,
                                           program->succeeded);
    program->texts = report.texts;
    programs_.SetReport(program->succeeded ? std::move(report)
                                           : WithAllMistakes(std::move(report), file));
    return program;
}

}  // namespace zentro
