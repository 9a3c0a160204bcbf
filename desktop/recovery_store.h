#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

#include "desktop/recovery_copy.h"
#include "desktop/session_lock.h"

namespace zentro {

/// The folder of the store in that of the user's data.
inline constexpr const char* kRecoveryFolder = "recovery";

/// So many copies of each file are kept.
inline constexpr int kMostCopies = 50;

/// A text that a run of the program left unsaved when it crashed.
struct UnsavedText {
    RecoveryCopy copy;
    QString marker;  ///< the file that says so
};

/// Keeps copies of texts that are not saved yet, so that a crash costs nothing, and of the texts
/// before them as a history. Any number of running programs share one folder:
///
///     copies/NAME-HASH/TIME-NUMBER-SESSION.copy   the copies of one file
///     sessions/SESSION/lock                       held while that run of the program lasts
///     sessions/SESSION/NAME-HASH                  empty; that file has unsaved changes there
///
/// Copies are on the disk when Keep returns, and only the user can read them. Files that are
/// damaged or not ours are left alone.
class RecoveryStore {
  public:
    /// The folder is made when the first copy is. The calls wait for the disk; see RecoveryService.
    explicit RecoveryStore(QString folder);
    ~RecoveryStore();
    RecoveryStore(const RecoveryStore&) = delete;
    RecoveryStore& operator=(const RecoveryStore&) = delete;

    /// Keeps a copy of an unsaved text, unless it is the same as the last one. `document` names the
    /// open document in this run of the program; an absolute path is that of its file, anything
    /// else the title of a text without one. Returns the message for the user when no copy could
    /// be made, empty otherwise.
    [[nodiscard]] QString Keep(const QString& document, const QString& pathOrTitle,
                               const QString& text);

    /// The document was saved, or closed on purpose. Its copies stay as the history of its file;
    /// those of a text without a file are removed.
    void Forget(const QString& document);

    /// What runs of the program left that ended without saving, the newest first. Programs that
    /// still run keep theirs, and what was listed here is listed by no other program while this
    /// one runs. Copies that nobody can ask for any more are removed.
    std::vector<UnsavedText> Unsaved();

    /// Takes a text over as the unsaved text of a document. What the document holds at present is
    /// kept as a copy first. Returns the message for the user when that failed; then the text
    /// stays unsaved as it was.
    [[nodiscard]] QString Restore(const UnsavedText& unsaved, const QString& document,
                                  const QString& presentText);

    /// The text is not wanted back. Its copies stay as the history of its file; those of a text
    /// without a file are removed.
    void Discard(const UnsavedText& unsaved);

    /// All copies of a document's file, the newest first.
    std::vector<RecoveryCopy> Copies(const QString& document, const QString& pathOrTitle) const;

  private:
    struct KeptDocument {
        QString folderName;
        QString lastCopy;  ///< file
        QString lastText;
        bool unsaved = false;
        bool isUntitled = false;
    };

    bool BeginSession();
    QString SessionFolder(const QString& session) const;
    QString CopyFolder(const QString& folderName) const;
    QString WriteCopy(KeptDocument& document, const QString& pathOrTitle, const QString& text);
    QStringList CopyFiles(const QString& folderName) const;
    /// Unless another document of the same file needs it.
    void RemoveMarker(const KeptDocument& document) const;
    void RemoveCopies(const QString& folderName, const QString& session) const;
    /// Texts without a file, of sessions that are over, and what a crash left half-written.
    void RemoveUnreachable() const;
    /// A session of this run of the program, which holds its lock.
    bool RemoveEmptySession(const QString& session, SessionLock& lock) const;
    bool HasCopies(const QString& folderName, const QString& session) const;
    void RemoveOldCopies(const QString& folderName) const;
    QStringList SessionsWithUnsaved(const QString& folderName) const;
    std::optional<RecoveryCopy> NewestCopy(const QString& folderName, const QString& session) const;
    void ReleaseIfEmpty(const QString& session);
    bool Adopt(const QString& session);

    QString folder_;
    QString session_;
    SessionLock lock_;
    QHash<QString, KeptDocument> documents_;
    QHash<QString, std::shared_ptr<SessionLock>> adopted_;
    QDateTime lastTime_;
    unsigned copiesMade_ = 0;
};

}  // namespace zentro
