#pragma once

#include <QByteArray>
#include <QFileSystemWatcher>
#include <QHash>
#include <QObject>
#include <QString>
#include <QTimer>
#include <optional>

#include "desktop/disk.h"

namespace zentro {

/// Notices that an open file was changed, replaced or deleted by somebody else. It compares
/// contents, so a file that was only touched has not changed. Of a file whose disk does not answer
/// it says nothing until it does.
class FileWatcher : public QObject {
    Q_OBJECT

  public:
    /// The disk outlives the object.
    explicit FileWatcher(Disk& disk, QObject* parent = nullptr);

    /// The file as it is now is the one that is known.
    void Watch(const QString& path);
    void Unwatch(const QString& path);

    /// This program wrote the file: what it holds now is known.
    void NoteSaved(const QString& path) { Watch(path); }

    /// Looks at all files at once, as for a drive that does not tell of changes.
    void CheckNow();

  signals:
    /// Once for each change; the file may be gone.
    void ChangedOnDisk(const QString& path);

  private:
    struct Seen {
        bool isThere = false;
        QByteArray hash;
    };

    std::optional<Seen> Ask(const QString& path);

    Disk& disk_;
    QFileSystemWatcher watcher_;
    /// The hash of each file's content; empty: no file. Nothing: the disk has not said yet.
    QHash<QString, std::optional<QByteArray>> known_;
    QTimer settle_;
};

}  // namespace zentro
