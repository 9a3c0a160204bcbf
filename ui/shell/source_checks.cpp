#include "ui/shell/source_checks.h"

#include "ui/editor/source_window.h"
#include "desktop/program_files.h"
#include "ui/shell/source_files.h"

namespace zentro {

SourceChecks::SourceChecks(Workbench& workbench, SourceFiles& files, QObject* parent)
    : QObject(parent),
      workbench_(workbench),
      files_(files),
      check_(workbench.configuration, [this](const std::string& path) { return OpenText(path); }) {
    ReadSetting();
    connect(&files_, &SourceFiles::Added, this, &SourceChecks::Follow);
    connect(&files_, &SourceFiles::FilesChanged, this, &SourceChecks::ChooseProgram);
    connect(&check_, &LiveCheck::Checked, this, &SourceChecks::ShowMessages);
}

void SourceChecks::ReadSetting() {
    check_.SetLiveCheck(FlagIsOn(workbench_.settings, SettingNumber::CheckWhileTyping));
}

void SourceChecks::SwitchOn(bool on) {
    workbench_.settings.SaveSetting(SettingNumber::CheckWhileTyping, on ? 1 : 0);
    check_.SetLiveCheck(on);
    if (on) check_.CheckNow();
}

void SourceChecks::Follow(SourceWindow* window) {
    connect(window, &SourceWindow::TextEdited, this, [this] {
        ChooseProgram();
        check_.TextChanged();
    });
    ChooseProgram();
}

void SourceChecks::ChooseProgram() {
    const SourceWindow* window = files_.Main() != nullptr ? files_.Main() : files_.Current();
    if (window == checked_) return;
    checked_ = window;
    ProgramFiles program;
    if (window != nullptr) {
        program = ProgramFilesFor(window->PathName().toStdString(),
                                  window->FileName().toStdString(), workbench_.settings);
    }
    check_.SetProgram(program);
}

std::optional<std::string> SourceChecks::OpenText(const std::string& path) const {
    const QString wanted = QString::fromStdString(path);
    for (const SourceWindow* window : files_.Windows()) {
        if (window->IsNewFile() && window->FileName() == wanted)
            return window->Text().toStdString();
    }
    const SourceWindow* open = files_.Find(wanted);
    if (open == nullptr) return std::nullopt;
    return open->Text().toStdString();
}

void SourceChecks::ShowMessages() {
    for (SourceWindow* window : files_.Windows()) {
        window->ShowMessages(check_.MessagesOf(window->PathName(), window->FileName()));
        window->SetProgramNames(check_.Names());
    }
}

}  // namespace zentro
