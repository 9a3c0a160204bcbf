#pragma once

class QApplication;

namespace zentro {

/// Shows the splash window, reads the settings and the language, opens the main window and lets the
/// program run until it is closed. Returns the exit status.
int RunDesktop(QApplication& application);

}  // namespace zentro
