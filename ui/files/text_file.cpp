#include "ui/files/text_file.h"

#include <QFile>
#include <string_view>

#include "config/encoding.h"
#include "config/file.h"

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>
#endif

namespace zentro {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

#ifdef Q_OS_WIN
constexpr LineEnd kUsualLineEnd = LineEnd::CrLf;
#else
constexpr LineEnd kUsualLineEnd = LineEnd::Lf;
#endif

QString CharactersOf(LineEnd lineEnd) {
    switch (lineEnd) {
        case LineEnd::Lf: return "\n";
        case LineEnd::CrLf: return "\r\n";
        case LineEnd::Cr: return "\r";
    }
    return "\n";
}

/// The line end that most lines of the text have; nothing when it has only one line.
std::optional<LineEnd> LineEndOf(std::string_view bytes) {
    std::size_t pairs = 0;
    std::size_t lineFeeds = 0;
    std::size_t returns = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (bytes[i] == '\n') {
            ++lineFeeds;
        } else if (bytes[i] == '\r') {
            const bool isPair = i + 1 < bytes.size() && bytes[i + 1] == '\n';
            ++(isPair ? pairs : returns);
            if (isPair) ++i;
        }
    }
    if (pairs + lineFeeds + returns == 0) return std::nullopt;
    if (pairs >= lineFeeds && pairs >= returns) return LineEnd::CrLf;
    return lineFeeds >= returns ? LineEnd::Lf : LineEnd::Cr;
}

/// A text that the system still holds in memory would be lost with the power.
void WriteOut(const std::string& path) {
#ifdef Q_OS_UNIX
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) return;
    static_cast<void>(fsync(descriptor));
    close(descriptor);
#else
    static_cast<void>(path);
#endif
}

}  // namespace

std::string SystemPath(const QString& path) {
    return QFile::encodeName(path).toStdString();
}

LoadedText LoadText(const QString& path) {
    const FileContent file = ReadWholeFile(SystemPath(path));
    LoadedText loaded;
    if (file.status != FileContent::Status::Read) {
        loaded.problem = QString::fromLocal8Bit(file.problem);
        return loaded;
    }
    std::string_view bytes = file.bytes;
    if (bytes.starts_with(kByteOrderMark)) bytes.remove_prefix(kByteOrderMark.size());
    if (IsUtf8(bytes)) {
        loaded.text = QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
    } else {
        loaded.text = QString::fromUtf8(ToUtf8(file.bytes));
        loaded.note = "This file was written in Windows-1252. It will be saved as UTF-8.";
    }
    loaded.text.replace("\r\n", "\n").replace('\r', '\n');
    if (loaded.text.endsWith('\n')) loaded.text.chop(1);
    return loaded;
}

QString SaveText(const QString& path, const QString& text, std::optional<LineEnd> lineEnd) {
    const std::string file = SystemPath(path);
    if (!lineEnd) lineEnd = LineEndOf(ReadWholeFile(file).bytes);
    QString lines = text + '\n';
    lines.replace("\r\n", "\n").replace('\r', '\n');
    if (const LineEnd wanted = lineEnd.value_or(kUsualLineEnd); wanted != LineEnd::Lf) {
        lines.replace("\n", CharactersOf(wanted));
    }
    const std::string problem = WriteWholeFile(file, lines.toStdString());
    if (problem.empty()) WriteOut(file);
    return QString::fromLocal8Bit(problem);
}

}  // namespace zentro
