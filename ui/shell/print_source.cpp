#include "ui/shell/print_source.h"

#include <QFont>
#include <QPrinter>
#include <QTextDocument>

#include "settings/settings_store.h"

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
    QFont font(QString::fromStdString(AsText(settings.GetSetting(SettingNumber::EditorFontName))));
    font.setStyleHint(QFont::Monospace);
    const double size = AsNumber(settings.GetSetting(SettingNumber::EditorFontSize));
    if (size > 0) font.setPointSizeF(size);
    QTextDocument document;
    document.setDefaultFont(font);
    document.setPlainText(PrintedText(fileTitle, text, printer.copyCount()));
    // The copies stand in the text already.
    printer.setCopyCount(1);
    document.print(&printer);
}

}  // namespace zentro
