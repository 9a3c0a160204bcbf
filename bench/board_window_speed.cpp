// Measures the board's window while a robot drives through the maze at its own pace, with all that
// its sensors see drawn: pictures a second, what it takes of the processor beyond the program
// itself, and what ten minutes of such a drive keep in memory. bench/board_window runs it.

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QToolButton>
#include <QtTest/QTest>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <malloc.h>
#include <vector>

#include "desktop/board_state.h"
#include "ui/board/floor_widget.h"
#include "ui/editor/source_window.h"
#include "ui/shell/board_windows.h"
#include "ui/shell/main_window.h"
#include "ui/shell/source_files.h"
#include "ui/support/dialogs.h"

namespace {

using namespace zentro;

constexpr int kSeconds = 10;
constexpr int kMinutes = 10;
constexpr int kMillisecondsOfMinute = 60'000;

class PaintCounter : public QObject {
  public:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) ++paints;
        return false;
    }
    int paints = 0;
};

double ProcessorSeconds() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

/// What the board and its world take for a drive of so many milliseconds, in seconds of the
/// processor, without a window that shows it.
double SecondsWithoutWindow(VirtualBoardHost& host, int milliseconds) {
    const double begin = ProcessorSeconds();
    for (int passed = 0; passed < milliseconds; passed += 10)
        host.Advance(10);
    return ProcessorSeconds() - begin;
}

void ReportWindow(MainWindow& window) {
    auto* floor = window.findChild<FloorWidget*>();
    if (floor == nullptr) qFatal("no floor is seen");
    window.findChild<QToolButton*>("BtnSight")->setChecked(true);
    PaintCounter counter;
    floor->installEventFilter(&counter);
    const double begin = ProcessorSeconds();
    QTest::qWait(kSeconds * 1000);
    const double used = ProcessorSeconds() - begin;
    floor->removeEventFilter(&counter);
    VirtualBoardHost& host = window.Board().VirtualBoard();
    if (!host.State().processor.running) qFatal("the robot has come to its goal too early");
    window.hide();
    const double own = SecondsWithoutWindow(host, kSeconds * 1000);
    std::printf("result\tboard window with the maze, pictures a second\t\t\t%.1f\t>= 30\n",
                static_cast<double>(counter.paints) / kSeconds);
    std::printf(
        "result\tboard window, share of a processor beyond the program's\t\t\t%.3f\t<= 0.1\n",
        (used - own) / kSeconds);
}

void ReportMemory(VirtualBoardHost& host) {
    host.Reset();
    host.Run();
    const std::size_t before = mallinfo2().uordblks;
    SecondsWithoutWindow(host, kMinutes * kMillisecondsOfMinute);
    const std::size_t after = mallinfo2().uordblks;
    std::printf("result\thistory of ten minutes in MB\t\t\t%.1f\t<= 64\n",
                (static_cast<double>(after) - static_cast<double>(before)) / 1e6);
}

}  // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    if (argc != 2) qFatal("usage: board_window_speed PROGRAM_FOLDER");
    const std::filesystem::path programs = argv[1];
    InstructionConfiguration configuration;
    if (!LoadInstructionConfig((programs / "ZentroCompiler.cfg").string(), configuration).empty())
        qFatal("no words");
    const QTemporaryDir folder;
    const std::filesystem::path path = folder.path().toStdString();
    std::filesystem::copy(programs / "examples/wall_follower.txt", path);
    DesktopDialogs dialogs;
    SettingsStore settings(path, path, [](const std::string&) {});
    Workbench workbench{settings, configuration, dialogs, programs, path};
    MainWindow window(workbench, [] { return std::vector<PortDescription>{}; });
    window.resize(1366, 768);
    window.show();
    if (!QTest::qWaitForWindowActive(&window)) qFatal("the window gets no keys");
    window.Files().OpenFile(folder.path(), "wall_follower.txt");
    QTest::keyClick(window.Files().Front(), Qt::Key_F9);
    VirtualBoardHost& host = window.Board().VirtualBoard();
    if (!QTest::qWaitFor([&host] { return host.State().processor.running; }))
        qFatal("the program does not run");
    ReportWindow(window);
    ReportMemory(host);
    return 0;
}
