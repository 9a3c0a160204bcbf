#pragma once

#include <QByteArray>
#include <QFileSystemWatcher>
#include <QHash>
#include <QObject>
#include <QString>
#include <QTimer>

namespace zentro {

/// Notices that an open file was changed, replaced or deleted by somebody else. It compares
/// contents, so a file that was only touched has not changed.
class FileWatcher : public QObject {
    Q_OBJECT

  public:
    explicit FileWatcher(QObject* parent = nullptr);

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
    QFileSystemWatcher watcher_;
    QHash<QString, QByteArray> known_;  ///< the hash of each file's content; empty: no file
    QTimer settle_;
};

}  // namespace zentro
