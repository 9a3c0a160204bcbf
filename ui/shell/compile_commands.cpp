#include "ui/shell/compile_commands.h"

#include <QDir>
#include <algorithm>
#include <vector>

#include "compiler/source_of_address.h"
#include "ui/editor/source_window.h"
#include "ui/output/compiler_output_window.h"
#include "ui/output/object_code_window.h"
#include "desktop/program_files.h"
#include "ui/shell/source_files.h"
#include "ui/support/child_windows.h"

namespace zentro {

namespace {

QString PathOf(const LineXref& line) {
    return QDir(QString::fromStdString(line.pathName))
        .filePath(QString::fromStdString(line.fileName));
}

}  // namespace

CompileCommands::CompileCommands(Workbench& workbench, SourceFiles& files,
                                 Surroundings surroundings, QObject* parent)
    : QObject(parent),
      workbench_(workbench),
      files_(files),
      surroundings_(std::move(surroundings)),
      service_(workbench, surroundings_.dialogParent) {}

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
    const SourceWindow* main = files_.Main();
    if (main == nullptr) return {};
    const ProgramFiles files = ProgramFilesFor(main->PathName().toStdString(),
                                               main->FileName().toStdString(), workbench_.settings);
    return QString::fromStdString(files.objectDirectory + files.objectFileName);
}

void CompileCommands::Run(CompileCommand command) {
    if (service_.IsRunning()) return;
    const std::optional<int> chosen =
        PrepareMainFile(command, files_, workbench_, surroundings_.dialogParent);
    if (!chosen) return;
    const SourceWindow& source = *files_.Windows().at(*chosen);
    const ProgramFiles program = ProgramFilesFor(
        source.PathName().toStdString(), source.FileName().toStdString(), workbench_.settings);
    OpenWindows(command, source.PathName(), source.FileName());
    const bool compiles = command == CompileCommand::Compile;
    const bool succeeded = compiles ? service_.Compile(program, *output_, objectCode_)
                                    : service_.Check(program, *output_);
    // Closing the program can end the windows while the compiler lets events run.
    if (output_ != nullptr) output_->FinishCompile();
    // A program with errors has no object code to show.
    if (!succeeded && objectCode_ != nullptr && objectCode_->IsEmpty()) CloseChild(objectCode_);
    ShowMessages();
    emit CompileFinished(succeeded);
}

void CompileCommands::OpenWindows(CompileCommand command, const QString& folder,
                                  const QString& name) {
    CloseChild(objectCode_);
    CloseChild(output_);
    if (command == CompileCommand::Compile) {
        objectCode_ = new ObjectCodeWindow(workbench_);
        surroundings_.addChild(objectCode_);
        objectCode_->PositionForm();
        connect(objectCode_, &ObjectCodeWindow::AddressActivated, this,
                [this](const QString& address) { ShowSourceOf(address); });
    }
    output_ = new CompilerOutputWindow(workbench_);
    surroundings_.addChild(output_);
    output_->PositionForm();
    output_->InitFile(folder, name);
    connect(output_, &CompilerOutputWindow::ShowLineWithError, this,
            [this](const LineXref& line) { ShowLine(line); });
}

/// Marks the messages of the run in the open files that they are about.
void CompileCommands::ShowMessages() {
    if (output_ == nullptr) return;
    const std::vector<PostedMessage> posted = output_->Messages();
    for (SourceWindow* window : files_.Windows()) {
        std::vector<LineMessage> messages;
        for (const PostedMessage& message : posted) {
            if (files_.Find(PathOf(message.place)) != window) continue;
            messages.push_back({message.place.sourceLineNo, message.severity,
                                QString::fromStdString(message.text)});
        }
        window->ShowMessages(messages);
    }
}

SourceWindow* CompileCommands::ShowLine(const LineXref& line) {
    SourceWindow* window = files_.OpenFile(QString::fromStdString(line.pathName),
                                           QString::fromStdString(line.fileName));
    if (window != nullptr) window->ShowLine(line.sourceLineNo);
    return window;
}

SourceWindow* CompileCommands::ShowSourceOf(const QString& address) {
    if (Last() == nullptr) return nullptr;
    const std::optional<LineXref> line = SourceOfAddress(*Last(), address.toStdString());
    return line ? ShowLine(*line) : nullptr;
}

void CompileCommands::ShowAddress(const QString& address) {
    if (objectCode_ != nullptr) objectCode_->SelectLineByAddresss(address);
    ShowSourceOf(address);
}

void CompileCommands::ShowFault(const QString& address, const QString& text) {
    ShowAddress(address);
    MarkAddress(address, text);
}

void CompileCommands::MarkAddress(const QString& address, const QString& text) {
    ClearMark();
    if (objectCode_ != nullptr) objectCode_->SelectLineByAddresss(address);
    if (Last() == nullptr) return;
    const std::optional<LineXref> line = SourceOfAddress(*Last(), address.toStdString());
    SourceWindow* window = line ? files_.Find(PathOf(*line)) : nullptr;
    if (window != nullptr) window->MarkLine(line->sourceLineNo, text);
}

void CompileCommands::ClearMark() {
    for (SourceWindow* window : files_.Windows()) {
        window->ClearMark();
    }
}

void CompileCommands::ApplySettings() {
    if (output_ != nullptr) output_->SetFormColours();
    if (objectCode_ != nullptr) objectCode_->SetFormColours();
}

}  // namespace zentro
