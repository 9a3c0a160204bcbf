#include "desktop/recovery_store.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <algorithm>

#include "config/file.h"
#include "desktop/text_file.h"

namespace zentro {

namespace {

constexpr const char* kLockName = "lock";
constexpr const char* kFailure =
    "Could not keep a recovery copy. System returned the following error: ";

/// On the disk when it returns. Returns the system's text for the failure, empty on success.
QString Write(const QString& path, const std::string& bytes) {
    return QString::fromLocal8Bit(
        WriteWholeFile(SystemPath(path), bytes, Durability::PowerCut, Readers::Owner));
}

bool MakeFolder(const QString& path) {
    return MakePrivateFolders(SystemPath(path)).empty();
}

bool IsMarker(const QString& path) {
    static const QRegularExpression kName("-[0-9a-f]{16}$");
    return QFileInfo(path).size() == 0 && kName.match(path).hasMatch();
}

QStringList FilesIn(const QString& folder) {
    return QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

/// Earlier versions of this program let others read the copies.
void CloseToOthers(const QString& folder) {
    constexpr QFile::Permissions kOthers = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                           QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    constexpr QFile::Permissions kFile = QFile::ReadOwner | QFile::WriteOwner;
    if (!(QFile::permissions(folder) & kOthers)) return;
    QDirIterator entry(folder, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                       QDirIterator::Subdirectories);
    while (entry.hasNext()) {
        const QFileInfo file(entry.next());
        if (file.isSymLink()) continue;
        QFile::setPermissions(file.filePath(), file.isDir() ? kFile | QFile::ExeOwner : kFile);
    }
    // The last, so that it is done again if this is cut short.
    QFile::setPermissions(folder, kFile | QFile::ExeOwner);
}

}  // namespace

RecoveryStore::RecoveryStore(QString folder) : folder_(std::move(folder)) {}

RecoveryStore::~RecoveryStore() {
    // What is unsaved even now stays for the next run to offer.
    if (!session_.isEmpty()) RemoveEmptySession(session_, lock_);
}

bool RecoveryStore::RemoveEmptySession(const QString& session, SessionLock& lock) const {
    const QString folder = SessionFolder(session);
    if (FilesIn(folder) != QStringList(kLockName)) return false;
    QFile::remove(folder + '/' + kLockName);
    lock.Release();
    QDir().rmdir(folder);
    return true;
}

QString RecoveryStore::SessionFolder(const QString& session) const {
    return folder_ + "/sessions/" + session;
}

QString RecoveryStore::CopyFolder(const QString& folderName) const {
    return folder_ + "/copies/" + folderName;
}

bool RecoveryStore::BeginSession() {
    if (!session_.isEmpty()) return true;
    CloseToOthers(folder_);
    constexpr int kTries = 5;
    for (int i = 0; i < kTries; ++i) {
        const QString session = QString("%1-%2")
                                    .arg(QCoreApplication::applicationPid())
                                    .arg(QRandomGenerator::system()->generate(), 8, 16, QChar('0'));
        if (!MakeFolder(SessionFolder(session))) return false;
        if (!lock_.Acquire(SessionFolder(session) + '/' + kLockName)) continue;
        session_ = session;
        return true;
    }
    return false;
}

QString RecoveryStore::Keep(const QString& document, const QString& pathOrTitle,
                            const QString& text) {
    if (!BeginSession()) return kFailure + ("cannot write to " + folder_);
    const KeptDocument before = documents_.value(document);
    KeptDocument kept = before;
    kept.folderName = CopyFolderName(pathOrTitle, session_ + '/' + document);
    const bool isRenamed = before.folderName != kept.folderName;
    if (isRenamed) kept = {kept.folderName, {}, {}, false, !QDir::isAbsolutePath(pathOrTitle)};
    const QString marker = SessionFolder(session_) + '/' + kept.folderName;
    if (!kept.unsaved) kept.unsaved = QFile::exists(marker) || Write(marker, {}).isEmpty();
    if (!kept.unsaved) return kFailure + ("cannot write to " + marker);
    QString problem;
    if (kept.lastCopy.isEmpty() || kept.lastText != text || !QFile::exists(kept.lastCopy)) {
        problem = WriteCopy(kept, pathOrTitle, text);
    }
    if (!problem.isEmpty()) {
        if (isRenamed || !before.unsaved) RemoveMarker(kept);
        return kFailure + problem;
    }
    documents_[document] = kept;
    // Under its old name it is not unsaved any more, now that the copy under the new one is there.
    if (isRenamed && before.unsaved) RemoveMarker(before);
    return {};
}

QString RecoveryStore::WriteCopy(KeptDocument& document, const QString& pathOrTitle,
                                 const QString& text) {
    const QString folder = CopyFolder(document.folderName);
    if (!MakeFolder(folder)) return "cannot make the folder " + folder;
    const bool isPath = QDir::isAbsolutePath(pathOrTitle);
    RecoveryCopy copy;
    copy.title = isPath ? QFileInfo(pathOrTitle).fileName() : pathOrTitle;
    copy.path = isPath ? QDir::cleanPath(pathOrTitle) : QString();
    copy.text = text;
    // A clock that was put back must not make an older copy of the newest.
    const QDateTime now = QDateTime::currentDateTimeUtc();
    lastTime_ = lastTime_.isValid() ? std::max(lastTime_, now) : now;
    const QString file = folder + '/' + CopyFileName(lastTime_, ++copiesMade_, session_);
    if (QString problem = Write(file, EncodeCopy(copy)); !problem.isEmpty()) return problem;
    document.lastCopy = file;
    document.lastText = text;
    RemoveOldCopies(document.folderName);
    return {};
}

void RecoveryStore::RemoveMarker(const KeptDocument& document) const {
    const bool isNeeded = std::ranges::any_of(documents_, [&](const KeptDocument& kept) {
        return kept.unsaved && kept.folderName == document.folderName;
    });
    if (isNeeded) return;
    QFile::remove(SessionFolder(session_) + '/' + document.folderName);
    if (document.isUntitled) RemoveCopies(document.folderName, session_);
}

void RecoveryStore::Forget(const QString& document) {
    const auto kept = documents_.find(document);
    if (kept == documents_.end() || !kept->unsaved) return;
    kept->unsaved = false;
    RemoveMarker(*kept);
}

void RecoveryStore::RemoveCopies(const QString& folderName, const QString& session) const {
    const QString folder = CopyFolder(folderName);
    for (const QString& file : FilesIn(folder)) {
        if (SessionOfCopy(file) == session) QFile::remove(folder + '/' + file);
    }
    QDir().rmdir(folder);  // stays when something is in it
}

QStringList RecoveryStore::CopyFiles(const QString& folderName) const {
    QStringList files = FilesIn(CopyFolder(folderName));
    files.removeIf([](const QString& name) { return !SessionOfCopy(name); });
    return files;
}

QStringList RecoveryStore::SessionsWithUnsaved(const QString& folderName) const {
    QStringList sessions = QDir(folder_ + "/sessions").entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    sessions.removeIf([&](const QString& session) {
        return !QFile::exists(SessionFolder(session) + '/' + folderName);
    });
    return sessions;
}

bool RecoveryStore::HasCopies(const QString& folderName, const QString& session) const {
    return std::ranges::any_of(CopyFiles(folderName),
                               [&](const QString& file) { return SessionOfCopy(file) == session; });
}

void RecoveryStore::RemoveOldCopies(const QString& folderName) const {
    QStringList files = CopyFiles(folderName);
    if (files.size() <= kMostCopies) return;
    std::ranges::reverse(files);
    // The last whole copy of a text that is unsaved somewhere stays, however old it is.
    QStringList wanted = SessionsWithUnsaved(folderName);
    for (qsizetype i = 0; i < files.size(); ++i) {
        const QString file = CopyFolder(folderName) + '/' + files[i];
        const QString session = SessionOfCopy(files[i]).value_or(QString());
        const bool isWanted = wanted.contains(session) && ReadCopy(file);
        if (isWanted) wanted.removeAll(session);
        if (i >= kMostCopies && !isWanted) QFile::remove(file);
    }
}

std::optional<RecoveryCopy> RecoveryStore::NewestCopy(const QString& folderName,
                                                      const QString& session) const {
    QStringList files = CopyFiles(folderName);
    std::ranges::reverse(files);
    for (const QString& file : files) {
        if (SessionOfCopy(file) != session) continue;
        if (auto copy = ReadCopy(CopyFolder(folderName) + '/' + file)) return copy;
    }
    return std::nullopt;
}

bool RecoveryStore::Adopt(const QString& session) {
    static const QRegularExpression kSessionName("^\\d+-[0-9a-f]{8}$");
    if (session == session_ || !kSessionName.match(session).hasMatch()) return false;
    if (adopted_.contains(session)) return true;
    auto lock = std::make_shared<SessionLock>();
    if (!lock->Acquire(SessionFolder(session) + '/' + kLockName)) return false;
    if (RemoveEmptySession(session, *lock)) return false;
    adopted_.insert(session, lock);
    return true;
}

std::vector<UnsavedText> RecoveryStore::Unsaved() {
    CloseToOthers(folder_);
    std::vector<UnsavedText> found;
    const QDir sessions(folder_ + "/sessions");
    for (const QString& session : sessions.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        if (!Adopt(session)) continue;
        MendUnfinishedWrites(SystemPath(SessionFolder(session)));
        for (const QString& folderName : FilesIn(SessionFolder(session))) {
            const QString marker = SessionFolder(session) + '/' + folderName;
            if (auto copy = NewestCopy(folderName, session)) {
                found.push_back({*std::move(copy), marker});
            } else if (IsMarker(marker) && !HasCopies(folderName, session)) {
                QFile::remove(marker);  // the crash came before the first copy
            }
        }
        ReleaseIfEmpty(session);
    }
    RemoveUnreachable();
    std::ranges::stable_sort(found, [](const UnsavedText& one, const UnsavedText& other) {
        return one.copy.time > other.copy.time;
    });
    return found;
}

QString RecoveryStore::Restore(const UnsavedText& unsaved, const QString& document,
                               const QString& presentText) {
    const QString& pathOrTitle =
        unsaved.copy.path.isEmpty() ? unsaved.copy.title : unsaved.copy.path;
    if (!presentText.isEmpty() && presentText != unsaved.copy.text) {
        if (QString problem = Keep(document, pathOrTitle, presentText); !problem.isEmpty()) {
            return problem;
        }
    }
    if (QString problem = Keep(document, pathOrTitle, unsaved.copy.text); !problem.isEmpty()) {
        return problem;
    }
    Discard(unsaved);
    return {};
}

void RecoveryStore::Discard(const UnsavedText& unsaved) {
    if (!QFile::remove(unsaved.marker)) return;
    const QFileInfo marker(unsaved.marker);
    const QString session = marker.dir().dirName();
    if (unsaved.copy.path.isEmpty()) RemoveCopies(marker.fileName(), session);
    ReleaseIfEmpty(session);
}

void RecoveryStore::ReleaseIfEmpty(const QString& session) {
    const auto lock = adopted_.find(session);
    if (lock != adopted_.end() && RemoveEmptySession(session, **lock)) adopted_.erase(lock);
}

void RecoveryStore::RemoveUnreachable() const {
    const QStringList folders =
        QDir(folder_ + "/copies").entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString& folderName : folders) {
        const QString folder = CopyFolder(folderName);
        // All copies in a folder are of one text, so any whole one tells whether it had a file.
        std::optional<RecoveryCopy> copy;
        for (const QString& file : CopyFiles(folderName)) {
            if (!copy) copy = ReadCopy(folder + '/' + file);
        }
        const bool isUntitled = copy && copy->path.isEmpty();
        bool removed = MendUnfinishedWrites(SystemPath(folder));
        for (const QString& file : FilesIn(folder)) {
            const auto session = SessionOfCopy(file);
            if (!isUntitled || !session || QFileInfo::exists(SessionFolder(*session))) continue;
            removed |= QFile::remove(folder + '/' + file);
        }
        if (removed) QDir().rmdir(folder);  // stays when something is in it
    }
}

std::vector<RecoveryCopy> RecoveryStore::Copies(const QString& document,
                                                const QString& pathOrTitle) const {
    const QString folderName = CopyFolderName(pathOrTitle, session_ + '/' + document);
    QStringList files = CopyFiles(folderName);
    std::ranges::reverse(files);
    std::vector<RecoveryCopy> copies;
    for (const QString& file : files) {
        if (auto copy = ReadCopy(CopyFolder(folderName) + '/' + file)) {
            copies.push_back(*std::move(copy));
        }
    }
    return copies;
}

}  // namespace zentro
