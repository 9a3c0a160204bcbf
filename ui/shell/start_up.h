#pragma once

#include <QStringList>
#include <functional>
#include <string>

#include "config/configuration.h"

namespace zentro {

class Dialogs;

/// Shows the splash window, reads the settings and the language, opens the main window and lets the
/// program run until it is closed. Needs the QApplication. `arguments` begin with the program's own
/// name; with any other it says that there are none and ends. Returns the exit status.
int RunDesktop(const QStringList& arguments, Dialogs& dialogs);

/// Reads the language from its file and tells what is wrong with it; what can be used is.
void LoadLanguage(const std::string& file, InstructionConfiguration& configuration,
                  Dialogs& dialogs);

/// Runs the program and returns its exit status. An unexpected failure is told to the user.
int RunTellingFailures(Dialogs& dialogs, const std::function<int()>& program);

}  // namespace zentro
