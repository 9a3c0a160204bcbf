#include "desktop/program_report.h"

#include <QDir>
#include <QFileInfo>

namespace zentro {

QString FileKey(const QString& folder, const QString& name) {
    if (folder.isEmpty() && !QDir::isAbsolutePath(name)) return name;
    const QFileInfo file(QDir(folder).filePath(name));
    const QString canonical = file.canonicalFilePath();
    return canonical.isEmpty() ? QDir::cleanPath(file.absoluteFilePath()) : canonical;
}

namespace {

std::map<QString, std::vector<int>> CodeLinesOf(const Compilation& compilation,
                                                const FileKeys& keys) {
    std::map<QString, std::vector<int>> codeLines;
    std::map<const SourceFile*, std::vector<int>*> ofFiles;
    for (const SourceFile& file : compilation.files)
        ofFiles[&file] = &codeLines[keys(QString::fromStdString(file.directory),
                                         QString::fromStdString(file.name))];
    for (const SourceLine& line : compilation.sourceLines) {
        const auto file = ofFiles.find(line.file);
        if (file != ofFiles.end() && line.GeneratesCode()) file->second->push_back(line.fileLineNo);
    }
    return codeLines;
}

}  // namespace

void MessageCollector::Add(const PostedMessage& message) {
    if (message.severity == Severity::Error) hasErrors_ = true;
    const bool isShown = message.severity == Severity::Error ||
                         message.severity == Severity::Warning ||
                         message.severity == Severity::Advice;
    if (!isShown || message.place.fileName.empty() || message.place.sourceLineNo < 1) return;
    Add(message.place,
        {message.place.sourceLineNo, message.severity, QString::fromStdString(message.text), false,
         MessageCodeText(message.code), QString::fromStdString(message.hint.text), message.hint.fix,
         QString::fromStdString(message.hint.sourceLine), QString::fromStdString(message.subject)});
}

void MessageCollector::AddInclude(const LineXref& place, Severity severity, const QString& text) {
    Add(place, {place.sourceLineNo, severity, text, true});
}

void MessageCollector::Add(const LineXref& place, LineMessage message) {
    messages_[{place.pathName, place.fileName}].push_back(std::move(message));
}

ProgramReport MessageCollector::Report(const QString& root, const Compilation& compilation,
                                       const FileKeys& keys,
                                       const std::map<QString, Revision>& openTexts,
                                       bool succeeded) const {
    const auto keyOf = [&](const std::string& folder, const std::string& name) {
        return keys(QString::fromStdString(folder), QString::fromStdString(name));
    };
    ProgramReport report;
    report.root = root;
    for (const SourceFile& file : compilation.files) {
        const QString key = keyOf(file.directory, file.name);
        if (!report.texts.contains(key)) report.files.push_back(key);
        const auto open = openTexts.find(key);
        report.texts[key] = open == openTexts.end() ? kTextOnDisk : open->second;
    }
    for (const auto& [place, messages] : messages_) {
        std::vector<LineMessage>& ofFile = report.messages[keyOf(place.first, place.second)];
        ofFile.insert(ofFile.end(), messages.begin(), messages.end());
    }
    report.codeLines = CodeLinesOf(compilation, keys);
    report.names = NamesOf(compilation);
    report.lines = compilation.sourceLines.size();
    report.succeeded = succeeded;
    return report;
}

}  // namespace zentro
