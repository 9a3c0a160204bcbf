// The program's main window as at its first start, until it has been painted.
// bench/start_up builds it and measures the time.

#include <QTemporaryDir>
#include <filesystem>

#include "bench/first_paint.h"
#include "ui/shell/main_window.h"
#include "ui/support/dialogs.h"

int main(int argc, char** argv) {
    using namespace zentro;
    const QApplication application(argc, argv);
    if (argc != 2) qFatal("usage: start_up_speed CONFIGURATION");
    const QTemporaryDir folder;
    const std::filesystem::path path = folder.path().toStdString();
    DesktopDialogs dialogs;
    SettingsStore settings(path, path, [](const std::string&) {});
    InstructionConfiguration configuration;
    const std::string problem = LoadInstructionConfig(argv[1], configuration);
    if (!problem.empty()) qFatal("%s", problem.c_str());
    Workbench workbench{settings, configuration, dialogs, path, path};
    MainWindow window(workbench, [] { return std::vector<PortDescription>{}; });
    const FirstPaint paint(window);
    window.show();
    return QApplication::exec();
}
