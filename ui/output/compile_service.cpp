#include "ui/output/compile_service.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QScopedValueRollback>

#include "config/file.h"
#include "desktop/program_files.h"
#include "ui/support/dialogs.h"

namespace zentro {

namespace {

QString Shown(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

/// The log of the present run. A compilation lives longer than the window that shows its log.
class PresentOutput : public OutputSink {
  public:
    void Write(std::string_view text, LogColour colour, const PostedMessage* message) override {
        if (present != nullptr) present->Write(text, colour, message);
    }
    void Clear() override {
        if (present != nullptr) present->Clear();
    }
    void Beep() override {
        if (present != nullptr) present->Beep();
    }

    OutputSink* present = nullptr;
};

class DialogPrompts : public Prompts {
  public:
    DialogPrompts(Dialogs& dialogs, QWidget* parent) : dialogs_(dialogs), parent_(parent) {}

    void ShowMessage(std::string_view text) override { dialogs_.ShowMessage(parent_, Shown(text)); }

    std::optional<std::string> FindMissingFile(std::string_view title, std::string_view directory,
                                               std::string_view fileName) override {
        const FileChoice choice{Shown(title), Shown(directory), Shown(fileName),
                                QString(kSourceFilter) + "|All Files|*", "txt"};
        const std::optional<QString> path = dialogs_.ChooseFileToOpen(parent_, choice);
        if (!path) return std::nullopt;
        return path->toStdString();
    }

  private:
    Dialogs& dialogs_;
    QWidget* parent_;
};

class DiskReader : public FileReader {
  public:
    FileContent Read(const std::string& path) override { return ReadWholeFile(path); }
};

/// Tells the reason of a failure, which the log has no room for.
class DiskWriter : public FileWriter {
  public:
    DiskWriter(Dialogs& dialogs, QWidget* parent) : dialogs_(dialogs), parent_(parent) {}

    std::string Write(const std::string& path, std::string_view bytes) override {
        std::string problem = WriteWholeFile(path, bytes);
        if (!problem.empty()) {
            dialogs_.ShowMessage(parent_, "The object file '" + Shown(path) +
                                              "' cannot be written: " + Shown(problem));
        }
        return problem;
    }

  private:
    Dialogs& dialogs_;
    QWidget* parent_;
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

/// What the compilations refer to.
struct CompileService::Outside {
    Outside(Dialogs& dialogs, QWidget* parent)
        : prompts(dialogs, parent), writer(dialogs, parent) {}

    PresentOutput output;
    DialogPrompts prompts;
    DiskReader reader;
    DiskWriter writer;
    EventProgress progress;
};

CompileService::CompileService(const Workbench& workbench, QWidget* dialogParent, QObject* parent)
    : QObject(parent),
      workbench_(workbench),
      dialogParent_(dialogParent),
      outside_(std::make_unique<Outside>(workbench.dialogs, dialogParent)) {}

CompileService::~CompileService() = default;

bool CompileService::Compile(const ProgramFiles& files, OutputSink& output, ListingSink* listing) {
    if (WouldOverwriteSource(files)) {
        workbench_.dialogs.ShowMessage(dialogParent_,
                                       "The object file would replace the source file '" +
                                           Shown(files.sourceFileName) +
                                           "'. Save it with another extension than .obj first.");
        return false;
    }
    const bool listed = AsBoolean(workbench_.settings.GetSetting(SettingNumber::ShowObjectCode));
    return Run(output, [&](Compilation& compilation) {
        return CompileSource(compilation, files, outside_->writer, listed ? listing : nullptr);
    });
}

bool CompileService::Check(const ProgramFiles& files, OutputSink& output) {
    return Run(output, [&](Compilation& compilation) { return SyntaxCheck(compilation, files); });
}

bool CompileService::Run(OutputSink& output, const std::function<bool(Compilation&)>& run) {
    if (isRunning_) {
        workbench_.dialogs.ShowMessage(dialogParent_, "Another compile is not finished yet.");
        return false;
    }
    const QScopedValueRollback running(isRunning_, true);
    const QScopedValueRollback<OutputSink*> present(outside_->output.present, &output);
    last_.reset();
    emit LastChanged();
    auto compilation = std::make_unique<Compilation>(
        workbench_.configuration,
        Environment{outside_->output, outside_->prompts, outside_->reader, outside_->progress});
    const bool succeeded = run(*compilation) && compilation->diagnostics.ErrorCount() == 0;
    last_ = std::move(compilation);
    emit LastChanged();
    return succeeded;
}

}  // namespace zentro
