#include "desktop/recovery_copy.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <algorithm>

#include "config/file.h"
#include "desktop/text_file.h"

namespace zentro {

namespace {

constexpr const char* kTimeFormat = "yyyyMMddTHHmmsszzz";
constexpr qsizetype kMostOfTitle = 40;
constexpr qsizetype kHashLength = 16;

QRegularExpressionMatch MatchName(const QString& fileName) {
    static const QRegularExpression kName(R"(^(\d{8}T\d{9})Z-\d{6,}-([0-9a-f-]+)\.copy$)");
    return kName.match(fileName);
}

QString ChecksumOf(const QByteArray& text) {
    return QString::fromLatin1(QCryptographicHash::hash(text, QCryptographicHash::Sha256).toHex());
}

/// Copies of earlier versions of this program have no checksum.
bool IsWhole(const QJsonObject& header, const QByteArray& text) {
    return header["bytes"].toInteger(-1) == text.size() &&
           (!header.contains("sha256") || header["sha256"].toString() == ChecksumOf(text));
}

}  // namespace

std::string EncodeCopy(const RecoveryCopy& copy) {
    const QByteArray text = copy.text.toUtf8();
    const QJsonObject header{{"title", copy.title},
                             {"path", copy.path},
                             {"bytes", text.size()},
                             {"sha256", ChecksumOf(text)}};
    return (QJsonDocument(header).toJson(QJsonDocument::Compact) + '\n' + text).toStdString();
}

std::optional<RecoveryCopy> ReadCopy(const QString& file) {
    const QRegularExpressionMatch name = MatchName(QFileInfo(file).fileName());
    const FileContent content = ReadWholeFile(SystemPath(file));
    const std::size_t headerEnd = content.bytes.find('\n');
    if (!name.hasMatch() || headerEnd == std::string::npos) return std::nullopt;
    const auto headerSize = static_cast<qsizetype>(headerEnd);
    const QByteArray bytes = QByteArray::fromStdString(content.bytes);
    const QJsonObject header = QJsonDocument::fromJson(bytes.left(headerSize)).object();
    const QByteArray text = bytes.mid(headerSize + 1);
    if (!IsWhole(header, text)) return std::nullopt;
    RecoveryCopy copy;
    copy.title = header["title"].toString();
    copy.path = header["path"].toString();
    copy.text = QString::fromUtf8(text);
    copy.time = QDateTime::fromString(name.captured(1), kTimeFormat);
    copy.time.setTimeSpec(Qt::UTC);
    copy.session = name.captured(2);
    return copy;
}

QString CopyFileName(const QDateTime& time, unsigned number, const QString& session) {
    return QString("%1Z-%2-%3.copy")
        .arg(time.toUTC().toString(kTimeFormat))
        .arg(number, 6, 10, QChar('0'))
        .arg(session);
}

std::optional<QString> SessionOfCopy(const QString& fileName) {
    const QRegularExpressionMatch name = MatchName(fileName);
    if (!name.hasMatch()) return std::nullopt;
    return name.captured(2);
}

QString CopyFolderName(const QString& pathOrTitle, const QString& untitledId) {
    const bool isPath = QDir::isAbsolutePath(pathOrTitle);
    const QString identity =
        isPath ? QDir::cleanPath(pathOrTitle) : pathOrTitle + '\n' + untitledId;
    QString title = QFileInfo(pathOrTitle).completeBaseName().left(kMostOfTitle);
    std::ranges::replace_if(
        title,
        [](QChar c) {
            return c.unicode() >= 0x80 || (!c.isLetterOrNumber() && c != '-' && c != '_');
        },
        QChar('_'));
    const QByteArray hash =
        QCryptographicHash::hash(identity.toUtf8(), QCryptographicHash::Sha256).toHex();
    return title + '-' + QString::fromLatin1(hash.left(kHashLength));
}

}  // namespace zentro
