#include <QApplication>
#include <cstdlib>
#include <iostream>

#include "ui/shell/start_up.h"
#include "ui/support/dialogs.h"

namespace {

/// Without a screen Qt would end the program in the middle; so it is looked for first.
bool HasDisplay() {
#if defined(Q_OS_UNIX) && !defined(Q_OS_MACOS)
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        const char* value = std::getenv(name);
        if (value != nullptr && *value != '\0') return true;
    }
    return false;
#else
    return true;
#endif
}

}  // namespace

int main(int argc, char** argv) {
    if (!HasDisplay()) {
        std::cerr << "zentro: there is no display to open a window on.\n"
                     "Without one, zentroc compiles programs, zentro-board runs them on a virtual "
                     "board and zentro-link sends them to a real one.\n";
        return 1;
    }
    const QApplication application(argc, argv);
    QApplication::setApplicationName("ZentroCompiler");
    QApplication::setApplicationVersion(ZENTRO_VERSION);
    QApplication::setDesktopFileName("zentro");
    zentro::DesktopDialogs dialogs;
    return zentro::RunDesktop(QApplication::arguments(), dialogs);
}
