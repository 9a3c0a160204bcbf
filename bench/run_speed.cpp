// Measures the time from a press of F9 on 1,000 typed lines to the first output of the virtual
// board: the check, the compilation, the board's window and the first instructions. bench/run_key
// builds it and runs it.

#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QtTest/QTest>
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <vector>

#include "config/file.h"
#include "desktop/board_state.h"
#include "ui/editor/source_window.h"
#include "ui/shell/main_window.h"
#include "ui/shell/source_files.h"
#include "ui/support/dialogs.h"

namespace {

using namespace zentro;

constexpr int kPresses = 7;
constexpr int kPatience = 10'000;  // milliseconds

/// The program that was read, with an output before all else.
QString ProgramFrom(const char* path) {
    const FileContent content = ReadWholeFile(path);
    if (content.status != FileContent::Status::Read) qFatal("%s cannot be read", path);
    QString text = QString::fromStdString(content.bytes);
    const QString begin = "BEGIN PROGRAM\n";
    if (!text.contains(begin)) qFatal("%s has no program", path);
    return text.replace(begin, begin + "    DISPLAY 1\n");
}

/// From the press to the output, in milliseconds.
double Press(MainWindow& window) {
    const Board& board = window.Board().VirtualBoard().State();
    QElapsedTimer clock;
    clock.start();
    QTest::keyClick(window.Files().Front(), Qt::Key_F9);
    while (board.outputs.display.value != 1) {
        if (clock.elapsed() > kPatience) qFatal("nothing was shown");
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    const double milliseconds = static_cast<double>(clock.nsecsElapsed()) / 1e6;
    QTest::keyClick(window.Files().Front(), Qt::Key_F9, Qt::ShiftModifier);
    return milliseconds;
}

}  // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    InstructionConfiguration configuration;
    if (argc != 3 || !LoadInstructionConfig(argv[1], configuration).empty())
        qFatal("usage: run_speed CONFIGURATION PROGRAM");
    const QTemporaryDir folder;
    const std::filesystem::path path = folder.path().toStdString();
    DesktopDialogs dialogs;
    SettingsStore settings(path, path, [](const std::string&) {});
    Workbench workbench{settings, configuration, dialogs, path, path};
    MainWindow window(workbench, [] { return std::vector<PortDescription>{}; });
    window.show();
    if (!QTest::qWaitForWindowActive(&window)) qFatal("the window gets no keys");
    QTest::keyClick(&window, Qt::Key_N, Qt::ControlModifier);
    window.Files().Front()->SetText(ProgramFrom(argv[2]));
    const double first = Press(window);
    double slowest = 0;
    for (int press = 1; press < kPresses; ++press)
        slowest = std::max(slowest, Press(window));
    std::printf("result\tfirst F9 on 1000 lines to the first output in ms\t\t\t%.0f\t<= 500\n",
                first);
    std::printf("result\tslowest F9 after that in ms\t\t\t%.0f\t<= 500\n", slowest);
    return 0;
}
