#include "ui/shell/recovery_keeper.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <utility>

#include "config/file.h"
#include "desktop/text_file.h"
#include "ui/dialogs/recovery_dialog.h"
#include "ui/editor/source_window.h"
#include "ui/shell/source_files.h"
#include "ui/support/dialogs.h"

namespace zentro {

namespace {

constexpr int kInterval = 10'000;  // milliseconds between two copies of a text that is typed

QString PathOrTitle(const OpenFile& file) {
    return file.NeverSaved() ? file.name : QDir(file.folder).absoluteFilePath(file.name);
}

struct FileOnDisk {
    bool isThere = false;
    LoadedText loaded;
};

/// A crash may have come in the middle of a save.
bool IsThereWhole(const QString& path) {
    MendUnfinishedWrites(SystemPath(QFileInfo(path).path()));
    return QFileInfo::exists(path);
}

/// What the store calls the document.
QString DocumentOf(FileId id) {
    return QString::number(static_cast<std::uint32_t>(id));
}

}  // namespace

RecoveryKeeper::RecoveryKeeper(Workbench& workbench, Programs& programs, SourceFiles& windows,
                               QObject* parent)
    : QObject(parent),
      workbench_(workbench),
      programs_(programs),
      windows_(windows),
      store_(QString::fromStdString((workbench.dataFolder / kRecoveryFolder).string())),
      watcher_(*workbench.disk, this) {
    connect(&programs_, &Programs::Changed, this, &RecoveryKeeper::Follow);
    connect(&programs_, &Programs::Closing, this, &RecoveryKeeper::Forget);
    connect(&watcher_, &FileWatcher::ChangedOnDisk, this, &RecoveryKeeper::LookAtDisk);
    connect(&store_, &RecoveryService::Finished, this, &RecoveryKeeper::TellOnce);
    connect(&timer_, &QTimer::timeout, this, [this] {
        if (!store_.IsBusy()) KeepAll();  // a disk that does not keep up gets no queue
    });
    timer_.start(kInterval);
    connect(qApp, &QGuiApplication::applicationStateChanged, this,
            [this](Qt::ApplicationState state) {
                if (state != Qt::ApplicationActive) KeepAll();
            });
}

RecoveryKeeper::~RecoveryKeeper() = default;

void RecoveryKeeper::KeepAll() {
    for (const OpenFile& file : programs_.Files()) {
        if (file.IsChanged()) Keep(file);
    }
}

void RecoveryKeeper::Keep(const OpenFile& file) {
    store_.Keep(DocumentOf(file.id), PathOrTitle(file), programs_.Text(file.id));
}

QString RecoveryKeeper::KeepNow() {
    KeepAll();
    return store_.Flush();
}

QString RecoveryKeeper::KeepLast() {
    timer_.stop();
    KeepAll();
    return store_.FlushAndStop();
}

/// A full disk is told once, not every ten seconds.
void RecoveryKeeper::TellOnce(const QString& problem) {
    if (problem.isEmpty()) {
        problemTold_ = false;
    } else if (!std::exchange(problemTold_, true)) {
        workbench_.dialogs.ShowMessage(nullptr, problem);
    }
}

void RecoveryKeeper::Follow() {
    for (const OpenFile& file : programs_.Files())
        FollowFile(file);
}

/// Watches the file where it lies now; once it is saved nothing of it need be kept.
void RecoveryKeeper::FollowFile(const OpenFile& file) {
    const bool isNew = !followed_.contains(file.id);
    Followed& followed = followed_[file.id];
    const QString path = file.NeverSaved() ? QString() : PathOrTitle(file);
    const bool isSaved = followed.savedRevision != file.savedRevision;
    if (followed.path != path && !followed.path.isEmpty()) watcher_.Unwatch(followed.path);
    if ((followed.path != path || isSaved) && !path.isEmpty()) watcher_.Watch(path);
    if (isSaved && !isNew) store_.Forget(DocumentOf(file.id));
    followed = {path, file.savedRevision};
}

void RecoveryKeeper::Forget(FileId id) {
    const OpenFile* file = programs_.File(id);
    // What was closed without saving stays among the copies of its file.
    if (file != nullptr && file->IsChanged()) Keep(*file);
    store_.Forget(DocumentOf(id));
    const auto followed = followed_.find(id);
    if (followed == followed_.end()) return;
    if (!followed->second.path.isEmpty()) watcher_.Unwatch(followed->second.path);
    followed_.erase(followed);
}

void RecoveryKeeper::EndSession() {
    timer_.stop();
    for (const OpenFile& file : programs_.Files())
        Forget(file.id);
    TellOnce(store_.Flush());
}

void RecoveryKeeper::OfferUnsaved(QWidget* parent) {
    std::vector<UnsavedText> texts = store_.Unsaved();
    if (texts.empty()) return;
    RecoveryDialog dialog(std::move(texts), *workbench_.disk, parent);
    connect(&dialog, &RecoveryDialog::RecoverChosen, this, &RecoveryKeeper::TakeBack);
    connect(&dialog, &RecoveryDialog::DiscardChosen, this,
            [this](const UnsavedText& text) { store_.Discard(text); });
    workbench_.dialogs.Run(dialog);
}

void RecoveryKeeper::ShowCopies(QWidget* parent) {
    OfferUnsaved(parent);
    const OpenFile* front = programs_.Front();
    if (front == nullptr) {
        workbench_.dialogs.ShowMessage(
            parent, tr("Earlier copies are kept for each program. Open the program first."));
        return;
    }
    const FileId id = front->id;
    std::vector<UnsavedText> texts;
    for (RecoveryCopy& copy : store_.Copies(DocumentOf(id), PathOrTitle(*front))) {
        texts.push_back({std::move(copy), {}});
    }
    if (texts.empty()) {
        workbench_.dialogs.ShowMessage(parent, tr("There are no copies of this file yet."));
        return;
    }
    RecoveryDialog dialog(std::move(texts), *workbench_.disk, parent);
    dialog.OfferOnlyRecovery();
    connect(&dialog, &RecoveryDialog::RecoverChosen, this, [this, id](const UnsavedText& text) {
        const OpenFile* file = programs_.File(id);
        if (file == nullptr) return;
        Keep(*file);
        windows_.WindowOf(id)->SetText(text.copy.text);
    });
    workbench_.dialogs.Run(dialog);
}

/// Puts the text into the window of its file, as a change that can be undone.
void RecoveryKeeper::TakeBack(const UnsavedText& unsaved) {
    const QFileInfo file(unsaved.copy.path);
    const auto isThere = workbench_.disk->Ask(
        unsaved.copy.path, Patience::WhileWanted,
        [path = unsaved.copy.path] { return !path.isEmpty() && IsThereWhole(path); });
    SourceWindow* window = !isThere.value_or(false)
                               ? windows_.NewFile()
                               : windows_.OpenFile(file.absolutePath(), file.fileName());
    if (window == nullptr) window = windows_.NewFile();
    store_.Restore(unsaved, DocumentOf(window->Id()), window->Text());
    window->SetText(unsaved.copy.text);
}

/// Somebody else has changed, deleted or brought back the file.
void RecoveryKeeper::LookAtDisk(const QString& path) {
    const auto followed = std::ranges::find_if(
        followed_, [&](const auto& entry) { return entry.second.path == path; });
    if (followed == followed_.end()) return;
    const OpenFile* file = programs_.File(followed->first);
    const auto onDisk = workbench_.disk->Ask(path, Patience::Short, [path]() -> FileOnDisk {
        if (!QFileInfo::exists(path)) return {};
        return {true, LoadText(path)};
    });
    if (!onDisk) return;
    if (!onDisk->isThere) {
        programs_.SetDisk(file->id, DiskState::Gone);
        return KeepAll();
    }
    const LoadedText& loaded = onDisk->loaded;
    const bool isSame = loaded.problem.empty() &&
                        QString::fromStdString(loaded.file.text) == programs_.Text(file->id);
    if (isSame) return programs_.SetDisk(file->id, DiskState::Same);
    OfferReload(*file);
}

void RecoveryKeeper::OfferReload(const OpenFile& file) {
    const FileId id = file.id;
    const bool isEdited = file.revision != file.savedRevision;
    // Whatever is answered, the text that is shown is not the one on the disk.
    programs_.SetDisk(id, DiskState::Differs);
    const QString question =
        isEdited ? tr("%1 was changed by another program, and here too. Load it again? What you "
                      "typed is kept among its copies and can be undone to.")
                 : tr("%1 was changed by another program. Load it again?");
    SourceWindow* window = windows_.WindowOf(id);
    const bool reloads = workbench_.dialogs.AskYesNo(window, question.arg(window->FileTitle()));
    const OpenFile* now = programs_.File(id);
    if (now == nullptr) return;
    if (!reloads || isEdited) Keep(*now);
    if (reloads) window->Reload();
}

}  // namespace zentro
