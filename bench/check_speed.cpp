// Measures the check that runs while one types: a program with mistakes is checked again and again,
// a letter typed before each time. bench/check builds and runs it.

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <limits>

#include "config/file.h"
#include "desktop/live_check.h"

namespace {

using namespace zentro;

constexpr int kChecks = 200;

QString ReadProgram(const char* path) {
    const FileContent content = ReadWholeFile(path);
    if (content.status != FileContent::Status::Read) qFatal("%s cannot be read", path);
    return QString::fromStdString(content.bytes);
}

/// The fastest check in milliseconds; nothing else that the machine does belongs to it.
double FastestCheck(const InstructionConfiguration& configuration, const OpenFile& file,
                    const SettingsStore& settings, Programs& programs, QString& text) {
    qint64 fastest = std::numeric_limits<qint64>::max();
    for (int check = 0; check < kChecks; ++check) {
        text += check % 2 == 0 ? "; typed" : "\n";
        programs.NoteEdited(file.id);
        QElapsedTimer clock;
        clock.start();
        programs.SetReport(CheckProgram(configuration, file, settings, programs));
        fastest = std::min(fastest, clock.nsecsElapsed());
    }
    return static_cast<double>(fastest) / 1e6;
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    InstructionConfiguration configuration;
    if (argc != 3 || !LoadInstructionConfig(argv[1], configuration).empty())
        qFatal("usage: check_speed CONFIGURATION PROGRAM");
    const QTemporaryDir folder;
    const std::filesystem::path path = folder.path().toStdString();
    SettingsStore settings(path, path, [](const std::string&) {});
    Disk disk;
    Programs programs(disk);
    QString text = ReadProgram(argv[2]);
    const FileId id = programs.Add(folder.path(), "program.txt", [&text] { return text; });
    const OpenFile& file = *programs.File(id);
    const qsizetype lines = text.count('\n');
    const double milliseconds = FastestCheck(configuration, file, settings, programs, text);
    const ProgramReport* report = programs.ReportOf(file.key);
    std::printf("result\tcheck while typing, %lld lines with %zu messages in ms\t\t\t%.2f\t<= 5\n",
                static_cast<long long>(lines), report->messages.at(file.key).size(), milliseconds);
    return 0;
}
