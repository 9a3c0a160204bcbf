#include "desktop/file_watcher.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <chrono>

#include "config/file.h"
#include "desktop/text_file.h"

namespace zentro {

namespace {

/// A save by way of another file deletes and makes; its end is waited for.
constexpr std::chrono::milliseconds kSettleTime{150};

/// Empty when there is no such file, or none that can be read.
QByteArray HashOf(const QString& path) {
    const FileContent content = ReadWholeFile(SystemPath(path));
    if (content.status != FileContent::Status::Read) return {};
    const QByteArrayView bytes(content.bytes.data(), static_cast<qsizetype>(content.bytes.size()));
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
}

}  // namespace

FileWatcher::FileWatcher(QObject* parent) : QObject(parent) {
    settle_.setSingleShot(true);
    settle_.setInterval(kSettleTime);
    connect(&settle_, &QTimer::timeout, this, &FileWatcher::CheckNow);
    const auto startToSettle = [this] { settle_.start(); };
    connect(&watcher_, &QFileSystemWatcher::fileChanged, this, startToSettle);
    connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, startToSettle);
}

void FileWatcher::Watch(const QString& path) {
    known_[path] = HashOf(path);
    // The folder tells of a file that is replaced or comes back.
    watcher_.addPaths({path, QFileInfo(path).absolutePath()});
}

void FileWatcher::Unwatch(const QString& path) {
    known_.remove(path);
    watcher_.removePath(path);
    const QString folder = QFileInfo(path).absolutePath();
    for (auto other = known_.keyBegin(); other != known_.keyEnd(); ++other) {
        if (QFileInfo(*other).absolutePath() == folder) return;
    }
    watcher_.removePath(folder);
}

void FileWatcher::CheckNow() {
    QStringList changed;
    for (auto file = known_.begin(); file != known_.end(); ++file) {
        // A file that was replaced is not watched any more.
        if (QFile::exists(file.key())) watcher_.addPath(file.key());
        const QByteArray hash = HashOf(file.key());
        if (hash == file.value()) continue;
        file.value() = hash;
        changed += file.key();
    }
    // Listeners may watch and unwatch files.
    for (const QString& path : changed) {
        if (known_.contains(path)) emit ChangedOnDisk(path);
    }
}

}  // namespace zentro
