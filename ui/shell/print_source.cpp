#include "ui/shell/print_source.h"

#include <QFont>
#include <QPrinter>
#include <QTextDocument>

#include "settings/settings_store.h"
#include "ui/support/source_font.h"

namespace zentro {

QString PrintedText(const QString& fileTitle, const QString& text, int copies) {
    QString printed = "\n** ZentroCompiler II File - " + fileTitle + " **\n";
    for (int copy = 0; copy < copies; ++copy) {
        printed += text;
        if (!text.endsWith('\n')) printed += '\n';
    }
    return printed;
}

void PrintSource(const QString& fileTitle, const QString& text, const SettingsStore& settings,
                 QPrinter& printer) {
    constexpr double kUsualSize = 9.75;
    const double wanted = AsNumber(settings.GetSetting(SettingNumber::EditorFontSize));
    QTextDocument document;
    document.setDefaultFont(SourceFont(
        QString::fromStdString(AsText(settings.GetSetting(SettingNumber::EditorFontName))),
        wanted > 0 ? wanted : kUsualSize));
    document.setPlainText(PrintedText(fileTitle, text, printer.copyCount()));
    // The copies stand in the text already.
    printer.setCopyCount(1);
    document.print(&printer);
}

}  // namespace zentro
