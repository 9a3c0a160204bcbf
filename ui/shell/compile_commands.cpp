#include "ui/shell/compile_commands.h"

#include <algorithm>

#include "compiler/paths.h"
#include "compiler/source_of_address.h"
#include "desktop/program_files.h"
#include "ui/editor/source_window.h"
#include "ui/output/compiler_output_window.h"
#include "ui/output/object_code_window.h"
#include "ui/shell/source_files.h"
#include "ui/support/child_windows.h"
#include "ui/support/dialogs.h"

namespace zentro {

namespace {

QString Shown(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

}  // namespace

/// What the compiler asks and tells, in boxes.
class CompileCommands::BoxPrompts : public Prompts {
  public:
    BoxPrompts(Dialogs& dialogs, QWidget* parent) : dialogs_(dialogs), parent_(parent) {}

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

/// The open files, as the choice of the file to compile sees them.
class CompileCommands::FilesToCompile : public OpenFiles {
  public:
    FilesToCompile(Programs& programs, SourceFiles& windows)
        : programs_(programs), windows_(windows) {}

    QList<OpenFileName> Names() const override {
        QList<OpenFileName> names;
        for (const OpenFile& file : programs_.Files())
            names += {file.name, file.folder};
        return names;
    }
    std::optional<int> FrontFile() const override { return IndexOf(programs_.Front()); }
    std::optional<int> MainFile() const override { return IndexOf(programs_.Main()); }
    void SetMainFile(int file) override {
        programs_.SetMain(At(file).id);
        windows_.BringToFront(At(file).id);
    }
    std::optional<int> OpenFromDisk(const QString& folder, const QString& name) override {
        const SourceWindow* window = windows_.OpenFile(folder, name);
        return window == nullptr ? std::nullopt : IndexOf(&window->File());
    }
    bool HasChanged(int file) const override { return At(file).IsChanged(); }
    bool WasNeverSaved(int file) const override {
        return windows_.WindowOf(At(file).id)->IsNewFile();
    }
    bool Save(int file) override { return windows_.Save(At(file).id); }

    const OpenFile& At(int file) const {
        return programs_.Files().at(static_cast<std::size_t>(file));
    }

  private:
    std::optional<int> IndexOf(const OpenFile* file) const {
        if (file == nullptr) return std::nullopt;
        return static_cast<int>(file - programs_.Files().data());
    }

    Programs& programs_;
    SourceFiles& windows_;
};

CompileCommands::CompileCommands(Workbench& workbench, Programs& programs, SourceFiles& files,
                                 Surroundings surroundings, QObject* parent)
    : QObject(parent),
      workbench_(workbench),
      programs_(programs),
      files_(files),
      surroundings_(std::move(surroundings)),
      prompts_(std::make_unique<BoxPrompts>(workbench.dialogs, surroundings_.dialogParent)),
      service_(workbench.configuration, workbench.settings, programs, *prompts_) {
    // Messages of programs that are all closed lead nowhere.
    connect(&programs_, &Programs::Changed, this, [this] {
        if (service_.IsRunning()) return;
        TellIfChanged();
        FollowName();
        if (!programs_.Files().empty()) return;
        CloseChild(output_);
        CloseChild(objectCode_);
    });
}

CompileCommands::~CompileCommands() = default;

CompilerOutputWindow* CompileCommands::Output() const {
    return output_;
}
ObjectCodeWindow* CompileCommands::ObjectCode() const {
    return objectCode_;
}

void CompileCommands::CompileSource() {
    Run(CompileCommand::Compile);
}
void CompileCommands::SyntaxCheck() {
    Run(CompileCommand::SyntaxCheck);
}

QString CompileCommands::ObjectFile() const {
    const OpenFile* main = programs_.Main();
    if (main == nullptr) return {};
    const ProgramFiles files = ProgramFilesOf(*main, workbench_.settings);
    return QString::fromStdString(PathOf(files.objectDirectory, files.objectFileName));
}

void CompileCommands::Run(CompileCommand command) {
    if (service_.IsRunning()) return;
    FilesToCompile choice(programs_, files_);
    const std::optional<int> chosen =
        PrepareMainFile(command, choice, workbench_, surroundings_.dialogParent);
    if (!chosen) return;
    const OpenFile file = choice.At(*chosen);
    OpenWindows(command == CompileCommand::Compile, file);
    bool succeeded = false;
    if (command == CompileCommand::Compile) {
        listed_ = service_.Compile(file, *output_, objectCode_);
        succeeded = listed_ != nullptr && listed_->succeeded;
    } else {
        succeeded = service_.Check(file, *output_);
    }
    FinishRun(file, succeeded);
    GoBackToSource(ClosedFiles::Leave);
    emit Finished(file.id, succeeded);
}

// The list of the files may change meanwhile. NOLINTNEXTLINE(performance-unnecessary-value-param)
std::shared_ptr<const CompiledProgram> CompileCommands::CompileTexts(OpenFile file) {
    if (service_.IsRunning()) return nullptr;
    OpenWindows(objectCode_ != nullptr, file);
    auto program = service_.CompileTexts(file, *output_, objectCode_);
    const bool succeeded = program != nullptr && program->succeeded;
    if (succeeded && objectCode_ != nullptr) listed_ = program;
    FinishRun(file, succeeded);
    SourceWindow* window = GoBackToSource(ClosedFiles::Open);
    if (window != nullptr && !succeeded) window->ShowMessageBeside();
    return program;
}

std::shared_ptr<const CompiledProgram> CompileCommands::CompileQuietly(const OpenFile& file) {
    class Nowhere : public OutputSink {
      public:
        void Write(std::string_view, LogColour, const PostedMessage*) override {}
    };
    Nowhere nowhere;
    auto program = service_.CompileTexts(file, nowhere, nullptr);
    return program != nullptr && program->succeeded ? program : nullptr;
}

/// What is said of a text that is another one now may not be so any more.
void CompileCommands::TellIfChanged() {
    if (output_ == nullptr) return;
    output_->ShowTextChanged(std::ranges::any_of(programs_.Files(), [this](const OpenFile& file) {
        const auto compiled = programs_.ReadOf(compiledTexts_, file);
        return compiled != compiledTexts_.end() && compiled->second != file.revision;
    }));
}

void CompileCommands::FollowName() {
    const auto read = compiledTexts_.find(compiledRoot_);
    if (output_ == nullptr || read == compiledTexts_.end()) return;
    const auto* const root = programs_.OpenedAs(read->first, read->second);
    if (root != nullptr) output_->InitFile(root->folder, root->name);
}

void CompileCommands::FinishRun(const OpenFile& file, bool succeeded) {
    const ProgramReport* report = programs_.ReportOf(file.key);
    compiledRoot_ = file.key;
    compiledTexts_ = report == nullptr ? Programs::ReadTexts{} : report->texts;
    // Closing the program can end the windows while the compiler lets events run.
    if (output_ != nullptr) output_->FinishCompile();
    // A program with errors has no object code to show.
    if (!succeeded && objectCode_ != nullptr && objectCode_->IsEmpty()) CloseChild(objectCode_);
}

void CompileCommands::OpenWindows(bool withListing, const OpenFile& file) {
    CloseChild(objectCode_);
    CloseChild(output_);
    listed_.reset();
    if (withListing) {
        objectCode_ = new ObjectCodeWindow(workbench_);
        surroundings_.addChild(objectCode_);
        connect(objectCode_, &ObjectCodeWindow::AddressActivated, this,
                [this](std::uint16_t address) {
                    if (const auto place = PlaceOf(listed_.get(), address)) ShowLine(*place);
                });
    }
    output_ = new CompilerOutputWindow(workbench_);
    surroundings_.addChild(output_);
    output_->InitFile(file.folder, file.name);
    connect(output_, &CompilerOutputWindow::ShowLineWithError, this,
            [this](const LineXref& line) { ShowLine(line); });
    connect(output_, &CompilerOutputWindow::FixWanted, this, [this](const Fix& fix) {
        SourceWindow* window = ShowLine({fix.fileName, fix.pathName, fix.line});
        if (window != nullptr) emit FixWanted(window, fix);
    });
}

/// Whoever compiled goes on in the source, at the first error. Whoever wanted a program to run sees
/// why it does not; whoever compiled it finds that in the log.
SourceWindow* CompileCommands::GoBackToSource(ClosedFiles closed) {
    if (output_ == nullptr) return nullptr;
    const std::vector<PostedMessage> messages = output_->Messages();
    const auto error = std::ranges::find(messages, Severity::Error, &PostedMessage::severity);
    if (error != messages.end()) {
        const LineXref& place = LineThatMatters(*error);
        const bool isOpen = OpenWindowOf(place) != nullptr;
        SourceWindow* window = isOpen || closed == ClosedFiles::Open ? ShowLine(place) : nullptr;
        if (window != nullptr) return window;
    }
    SourceWindow* window = files_.Front();
    if (window != nullptr) surroundings_.bringToFront(window);
    return window;
}

/// Null: the file is not open. One that was never saved has no path.
SourceWindow* CompileCommands::OpenWindowOf(const LineXref& line) const {
    const QString key = programs_.KeyOf(QString::fromStdString(line.pathName),
                                        QString::fromStdString(line.fileName));
    const auto read = compiledTexts_.find(key);
    const zentro::OpenFile* file =
        read == compiledTexts_.end() ? programs_.Find(key) : programs_.OpenedAs(key, read->second);
    return file == nullptr ? nullptr : files_.WindowOf(file->id);
}

SourceWindow* CompileCommands::ShowLine(const LineXref& line) {
    SourceWindow* window = OpenWindowOf(line);
    if (window != nullptr) surroundings_.bringToFront(window);
    if (window == nullptr) {
        window = files_.OpenFile(QString::fromStdString(line.pathName),
                                 QString::fromStdString(line.fileName));
    }
    if (window != nullptr) window->PutCaretAt(line.sourceLineNo);
    return window;
}

std::optional<LineXref> CompileCommands::PlaceOf(const CompiledProgram* program,
                                                 std::uint16_t address) {
    if (program == nullptr) return std::nullopt;
    return SourceOfAddress(*program->compilation, address);
}

void CompileCommands::SelectMessage(FileId id, int line) {
    const auto* const file = programs_.File(id);
    if (output_ == nullptr || file == nullptr) return;
    const auto read = programs_.ReadOf(compiledTexts_, *file);
    if (read == compiledTexts_.end()) return;
    output_->SelectMessage([&](const LineXref& place) {
        return programs_.LineNow(*file, place.sourceLineNo, read->second) == line &&
               programs_.KeyOf(QString::fromStdString(place.pathName),
                               QString::fromStdString(place.fileName)) == read->first;
    });
}

void CompileCommands::SelectInListing(const CompiledProgram* program, std::uint16_t address) {
    if (objectCode_ != nullptr && program != nullptr && program == listed_.get())
        objectCode_->SelectLineByAddresss(address);
}

void CompileCommands::ShowAddress(const CompiledProgram* program, std::uint16_t address) {
    SelectInListing(program, address);
    if (const auto place = PlaceOf(program, address)) ShowLine(*place);
}

void CompileCommands::ApplySettings() {
    if (output_ != nullptr) output_->SetFormColours();
    if (objectCode_ != nullptr) objectCode_->SetFormColours();
}

}  // namespace zentro
