#include "desktop/example_programs.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStringList>

namespace zentro {

namespace {

/// The paragraphs of the comment that a source begins with.
QStringList HeadParagraphs(const QString& source) {
    QStringList paragraphs(1);
    for (const QString& line : source.split('\n')) {
        if (!line.trimmed().startsWith(';')) break;
        const QString text = line.trimmed().mid(1).trimmed();
        if (text.isEmpty()) {
            paragraphs += QString();
        } else {
            paragraphs.last() += (paragraphs.last().isEmpty() ? "" : " ") + text;
        }
    }
    paragraphs.removeAll(QString());
    return paragraphs;
}

}  // namespace

std::vector<ExampleProgram> ExamplesIn(const QString& folder) {
    std::vector<ExampleProgram> examples;
    for (const QFileInfo& file : QDir(folder).entryInfoList({"*.txt"}, QDir::Files)) {
        const QString name = file.completeBaseName();
        QString title = QString(name).replace('_', ' ');
        if (!title.isEmpty()) title[0] = title[0].toUpper();
        examples.push_back({file.absoluteFilePath(), name, title});
    }
    return examples;
}

/// The title stands in a paragraph of its own, or before a colon in the only one.
QString FirstSentence(const QString& source) {
    const QStringList paragraphs = HeadParagraphs(source);
    if (paragraphs.isEmpty()) return {};
    QString text = paragraphs.value(1);
    if (paragraphs.size() == 1) {
        text = paragraphs.first().section(": ", 1);
        if (!text.isEmpty()) text[0] = text[0].toUpper();
    }
    static const QRegularExpression end("[.?!](\\s|$)");
    const qsizetype at = text.indexOf(end);
    return at < 0 ? text : text.left(at + 1);
}

}  // namespace zentro
