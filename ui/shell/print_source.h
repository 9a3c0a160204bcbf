#pragma once

#include <QString>

class QPrinter;

namespace zentro {

class SettingsStore;

/// What is printed: a header line with the file's title, once, and then the text once for each
/// copy.
QString PrintedText(const QString& fileTitle, const QString& text, int copies);

/// Prints a program in the editor's font on the printer as it is set up.
void PrintSource(const QString& fileTitle, const QString& text, const SettingsStore& settings,
                 QPrinter& printer);

}  // namespace zentro
