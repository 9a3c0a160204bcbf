#include "desktop/file_watcher.h"

#include <QCryptographicHash>
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

FileWatcher::FileWatcher(Disk& disk, QObject* parent) : QObject(parent), disk_(disk) {
    settle_.setSingleShot(true);
    settle_.setInterval(kSettleTime);
    connect(&settle_, &QTimer::timeout, this, &FileWatcher::CheckNow);
    const auto startToSettle = [this] { settle_.start(); };
    connect(&watcher_, &QFileSystemWatcher::fileChanged, this, startToSettle);
    connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, startToSettle);
    connect(&disk_, &Disk::Answered, this, startToSettle);
}

std::optional<FileWatcher::Seen> FileWatcher::Ask(const QString& path) {
    return disk_.Ask(path, Patience::Short, [path] {
        return Seen{QFileInfo::exists(path), HashOf(path)};
    });
}

void FileWatcher::Watch(const QString& path) {
    const std::optional<Seen> seen = Ask(path);
    known_[path] = seen ? std::optional(seen->hash) : std::nullopt;
    // The folder tells of a file that is replaced or comes back.
    if (seen) watcher_.addPaths({path, QFileInfo(path).absolutePath()});
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
        const std::optional<Seen> seen = Ask(file.key());
        if (!seen) continue;
        const bool isNew = !file.value();
        // A file that was replaced is not watched any more.
        if (seen->isThere) watcher_.addPath(file.key());
        if (isNew) watcher_.addPath(QFileInfo(file.key()).absolutePath());
        if (seen->hash == file.value()) continue;
        file.value() = seen->hash;
        if (!isNew) changed += file.key();
    }
    // Listeners may watch and unwatch files.
    for (const QString& path : changed) {
        if (known_.contains(path)) emit ChangedOnDisk(path);
    }
}

}  // namespace zentro
