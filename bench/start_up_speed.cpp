// How long it takes from the start of a process to the first paint of its window: the program's
// main window ("zentro"), or a window with a menu and nothing else ("minimal"). Prints
// milliseconds.

#include <QApplication>
#include <QMainWindow>
#include <QMenuBar>
#include <QTemporaryDir>
#include <QTimer>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <filesystem>

#include "ui/shell/main_window.h"
#include "ui/support/dialogs.h"

namespace {

using namespace zentro;
using Clock = std::chrono::steady_clock;

/// Ends the program when the window was painted, and says when that was.
class FirstPaint : public QObject {
  public:
    FirstPaint(QWidget& window, Clock::time_point start) : start_(start) {
        window.installEventFilter(this);
    }

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            const std::chrono::duration<double, std::milli> time = Clock::now() - start_;
            std::printf("%.2f\n", time.count());
            QTimer::singleShot(0, qApp, &QApplication::quit);
        }
        return false;
    }

  private:
    Clock::time_point start_;
};

int ShowMinimal(Clock::time_point start) {
    QMainWindow window;
    window.menuBar()->addMenu("&File")->addAction("E&xit");
    const FirstPaint paint(window, start);
    window.resize(1200, 800);
    window.show();
    return QApplication::exec();
}

int ShowZentro(Clock::time_point start, const char* configurationFile) {
    const QTemporaryDir folder;
    const std::filesystem::path path = folder.path().toStdString();
    DesktopDialogs dialogs;
    SettingsStore settings(path, path, [](const std::string&) {});
    InstructionConfiguration configuration;
    if (!LoadInstructionConfig(configurationFile, configuration).empty()) return 1;
    Workbench workbench{settings, configuration, dialogs, path, path};
    MainWindow window(workbench, [] { return std::vector<PortDescription>{}; });
    const FirstPaint paint(window, start);
    window.show();
    return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
    const Clock::time_point start = Clock::now();
    const QApplication application(argc, argv);
    if (argc < 3) return 2;
    return std::strcmp(argv[1], "minimal") == 0 ? ShowMinimal(start) : ShowZentro(start, argv[2]);
}
