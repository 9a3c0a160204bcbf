#include "desktop/live_check.h"

#include <chrono>

#include "compiler/editor_check.h"
#include "desktop/program_files.h"
#include "desktop/quiet_environment.h"

namespace zentro {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds kRest = 300ms;
constexpr int kMostLateChecks = 3;  // of the same texts
/// A program that takes longer to check is checked less often.
constexpr std::size_t kManyLines = 20000;
constexpr std::chrono::milliseconds kLongRest = 1000ms;

class CheckOutput : public OutputSink {
  public:
    explicit CheckOutput(const OpenTextReader& files) : files_(files) {}

    void Write(std::string_view, LogColour, const PostedMessage* message) override {
        if (message == nullptr) return;
        const bool lacksFile = message->code == MessageCode::FileNotOpened && files_.GotNoAnswer();
        lacksFiles = lacksFiles || lacksFile;
        messages.Add(*message);
    }

    MessageCollector messages;
    bool lacksFiles = false;

  private:
    const OpenTextReader& files_;
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

}  // namespace

ProgramReport CheckProgram(const InstructionConfiguration& configuration, const OpenFile& file,
                           const SettingsStore& settings, const Programs& programs) {
    OpenTextReader files(programs, Patience::Short);
    CheckOutput output(files);
    QuietPrompts prompts;
    NoProgress progress;
    Compilation compilation(configuration, {output, prompts, files, progress});
    compilation.wantsAdvice = FlagIsOn(settings, SettingNumber::ShowAdvice);
    const std::vector<IncludedMistakes> included =
        CheckForEditor(compilation, ProgramFilesOf(file, settings));
    for (const IncludedMistakes& mistakes : included) {
        output.messages.AddInclude(mistakes.place,
                                   mistakes.errors > 0 ? Severity::Error : Severity::Warning,
                                   IncludedText(mistakes));
    }
    ProgramReport report =
        output.messages.Report(file.key, compilation, KeysOf(programs), OpenTexts(programs),
                               compilation.diagnostics.ErrorCount() == 0);
    report.lacksFiles = output.lacksFiles;
    return report;
}

LiveCheck::LiveCheck(const InstructionConfiguration& configuration, SettingsStore& settings,
                     Programs& programs, QObject* parent)
    : QObject(parent),
      configuration_(configuration),
      settings_(settings),
      programs_(programs),
      includeWords_(QString::fromStdString(
          std::string(configuration.commands.GetCommandText(Token::Include)))) {
    rest_.setSingleShot(true);
    connect(&rest_, &QTimer::timeout, this, &LiveCheck::CheckNow);
    connect(&programs_, &Programs::Changed, this, &LiveCheck::Follow);
    connect(&programs_.FileDisk(), &Disk::Answered, this, &LiveCheck::CheckLateFiles);
    ReadSetting();
}

void LiveCheck::ReadSetting() {
    const bool on = FlagIsOn(settings_, SettingNumber::CheckWhileTyping);
    if (on == isOn_) return;
    isOn_ = on;
    if (on) return CheckNow();
    rest_.stop();
    programs_.ForgetReports();
}

void LiveCheck::SetLiveCheck(bool on) {
    settings_.SaveSetting(SettingNumber::CheckWhileTyping, on ? 1 : 0);
    ReadSetting();
}

/// A file that comes to the front shows its marks at once; a text that is typed gets its own when
/// the user rests.
void LiveCheck::Follow() {
    const OpenFile* front = programs_.Front();
    std::map<FileId, Revision> texts;
    for (const OpenFile& file : programs_.Files())
        texts[file.id] = file.revision;
    const auto id = front == nullptr ? std::nullopt : std::optional(front->id);
    const bool isOther = id != front_;
    const bool isEdited = texts != texts_;
    front_ = id;
    texts_ = std::move(texts);
    if (isEdited) lateChecks_ = 0;
    if (!isOn_ || front == nullptr) return;
    const OpenFile* root = programs_.Find(programs_.RootOf(*front));
    const ProgramReport* report = programs_.ReportOf(programs_.RootOf(*front));
    const bool isMany = report != nullptr && report->lines > kManyLines;
    if (isEdited && !isOther) {
        rest_.start(isMany ? kLongRest : kRest);
    } else if (root != nullptr && !programs_.IsFresh(*root) && !rest_.isActive()) {
        rest_.start(isMany ? kRest : 0ms);
    }
}

/// Other open files may include the one in front: what they read is found out once for each of
/// their texts.
void LiveCheck::LearnIncludes(const OpenFile& file) {
    const std::vector<OpenFile> files = programs_.Files();
    for (const OpenFile& other : files) {
        const bool mayInclude =
            programs_.Text(other.id).contains(includeWords_, Qt::CaseInsensitive);
        if (other.id != file.id && mayInclude && !programs_.IsFresh(other)) Check(other);
    }
}

void LiveCheck::Check(const OpenFile& root) {
    programs_.SetReport(CheckProgram(configuration_, root, settings_, programs_));
}

/// A disk that is always late must not be asked for ever.
void LiveCheck::CheckLateFiles() {
    const OpenFile* front = programs_.Front();
    if (!isOn_ || front == nullptr) return;
    const OpenFile* root = programs_.Find(programs_.RootOf(*front));
    const ProgramReport* report = root == nullptr ? nullptr : programs_.ReportOf(root->key);
    if (report == nullptr || !report->lacksFiles || lateChecks_ == kMostLateChecks) return;
    ++lateChecks_;
    Check(*root);
}

void LiveCheck::CheckNow() {
    if (isOn_) CheckForCommand();
}

void LiveCheck::CheckForCommand() {
    const OpenFile* front = programs_.Front();
    if (front == nullptr) return;
    LearnIncludes(*front);
    const OpenFile* root = programs_.Find(programs_.RootOf(*front));
    if (root != nullptr && !programs_.IsFresh(*root)) Check(*root);
    rest_.stop();
}

}  // namespace zentro
