#pragma once

#include <QDateTime>
#include <QString>
#include <optional>

namespace zentro {

/// A copy of a text as it was at a moment. On disk: a line of JSON with title, path, and the number
/// and the SHA-256 of the bytes that follow, then the text in UTF-8.
struct RecoveryCopy {
    QString title;
    QString path;  ///< of the file; empty when it was never saved
    QString text;
    QDateTime time;   ///< UTC, from the copy's name
    QString session;  ///< the run of the program that made it, from the copy's name
};

/// The bytes of a copy's file.
std::string EncodeCopy(const RecoveryCopy& copy);

/// Reads a copy's file. Nothing when it is damaged or no copy at all.
std::optional<RecoveryCopy> ReadCopy(const QString& file);

/// "20260131T142501123Z-000001-SESSION.copy": by name, the older ones come first.
QString CopyFileName(const QDateTime& time, unsigned number, const QString& session);

/// The session in the name of a copy's file; nothing when it is no such name.
std::optional<QString> SessionOfCopy(const QString& fileName);

/// The folder of a file's copies: a name that every file system takes, one for each path.
/// `untitledId` tells unsaved texts with one title apart.
QString CopyFolderName(const QString& pathOrTitle, const QString& untitledId);

}  // namespace zentro
