#include "ui/files/text_file.h"

#include <QFile>

#include "config/file.h"

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>
#endif

namespace zentro {

namespace {

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
    const FileContent content = ReadWholeFile(SystemPath(path));
    if (content.status != FileContent::Status::Read) return {{}, content.problem};
    return {FromFileBytes(content.bytes), {}};
}

std::string SaveText(const QString& path, const FileText& text) {
    const std::string file = SystemPath(path);
    std::string problem = WriteWholeFile(file, ToFileBytes(text));
    if (problem.empty()) WriteOut(file);
    return problem;
}

}  // namespace zentro
