#include "desktop/text_file.h"

#include <QFile>

#include "config/file.h"

namespace zentro {

std::string SystemPath(const QString& path) {
    return QFile::encodeName(path).toStdString();
}

LoadedText LoadText(const QString& path) {
    const FileContent content = ReadWholeFile(SystemPath(path));
    if (content.status != FileContent::Status::Read) return {{}, content.problem};
    return {FromFileBytes(content.bytes), {}};
}

std::string SaveText(const QString& path, const FileText& text) {
    return WriteWholeFile(SystemPath(path), ToFileBytes(text), Durability::PowerCut);
}

}  // namespace zentro
