#include "ui/shell/recovery_keeper.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>

#include "ui/editor/source_window.h"
#include "ui/dialogs/recovery_dialog.h"
#include "ui/shell/source_files.h"
#include "ui/support/dialogs.h"

namespace zentro {

namespace {

constexpr int kInterval = 10'000;  // milliseconds between two copies of a text that is typed

QString PathOrTitle(const SourceWindow& window) {
    if (window.IsNewFile()) return window.FileTitle();
    return QDir(window.PathName()).absoluteFilePath(window.FileName());
}

}  // namespace

RecoveryKeeper::RecoveryKeeper(Workbench& workbench, SourceFiles& files, QObject* parent)
    : QObject(parent),
      workbench_(workbench),
      files_(files),
      store_(QString::fromStdString((workbench.dataFolder / "recovery").string())) {
    connect(&files_, &SourceFiles::Added, this, &RecoveryKeeper::Follow);
    connect(&files_, &SourceFiles::Closed, this, &RecoveryKeeper::Forget);
    connect(&files_, &SourceFiles::Saved, this, [this](SourceWindow* window) {
        store_.Forget(DocumentOf(window));
        watcher_.NoteSaved(PathOrTitle(*window));
    });
    connect(&watcher_, &FileWatcher::ChangedOnDisk, this, &RecoveryKeeper::OfferReload);
    connect(&timer_, &QTimer::timeout, this, &RecoveryKeeper::KeepAll);
    timer_.start(kInterval);
    connect(qApp, &QGuiApplication::applicationStateChanged, this,
            [this](Qt::ApplicationState state) {
                if (state != Qt::ApplicationActive) KeepAll();
            });
}

RecoveryKeeper::~RecoveryKeeper() = default;

QString RecoveryKeeper::DocumentOf(const SourceWindow* window) {
    QString& document = documents_[window];
    if (document.isEmpty()) document = QString::number(++lastDocument_);
    return document;
}

void RecoveryKeeper::KeepAll() {
    for (const SourceWindow* window : files_.Changed()) {
        TellOnce(store_.Keep(DocumentOf(window), PathOrTitle(*window), window->Text()));
    }
}

/// A full disk is told once, not every ten seconds.
void RecoveryKeeper::TellOnce(const QString& problem) {
    if (problem.isEmpty()) {
        problemTold_ = false;
    } else if (!std::exchange(problemTold_, true)) {
        workbench_.dialogs.ShowMessage(nullptr, problem);
    }
}

void RecoveryKeeper::Follow(SourceWindow* window) {
    if (!window->IsNewFile()) watcher_.Watch(PathOrTitle(*window));
}

void RecoveryKeeper::Forget(SourceWindow* window) {
    // What was closed without saving stays among the copies of its file.
    if (window->SourceChanged() && !window->IsNewFile())
        TellOnce(store_.Keep(DocumentOf(window), PathOrTitle(*window), window->Text()));
    store_.Forget(DocumentOf(window));
    if (!window->IsNewFile()) watcher_.Unwatch(PathOrTitle(*window));
    documents_.remove(window);
}

void RecoveryKeeper::EndSession() {
    timer_.stop();
    for (SourceWindow* window : files_.Windows()) {
        Forget(window);
    }
}

void RecoveryKeeper::OfferUnsaved(QWidget* parent) {
    std::vector<UnsavedText> texts = store_.Unsaved();
    if (texts.empty()) return;
    RecoveryDialog dialog(std::move(texts), parent);
    connect(&dialog, &RecoveryDialog::RecoverChosen, this, &RecoveryKeeper::TakeBack);
    connect(&dialog, &RecoveryDialog::DiscardChosen, this,
            [this](const UnsavedText& text) { store_.Discard(text); });
    workbench_.dialogs.Run(dialog);
}

void RecoveryKeeper::ShowCopies(QWidget* parent) {
    OfferUnsaved(parent);
    SourceWindow* window = files_.Front();
    if (window == nullptr) return;
    std::vector<UnsavedText> texts;
    for (RecoveryCopy& copy : store_.Copies(DocumentOf(window), PathOrTitle(*window))) {
        texts.push_back({std::move(copy), {}});
    }
    if (texts.empty()) {
        workbench_.dialogs.ShowMessage(parent, "There are no copies of this file yet.");
        return;
    }
    RecoveryDialog dialog(std::move(texts), parent);
    dialog.OfferOnlyRecovery();
    connect(&dialog, &RecoveryDialog::RecoverChosen, this, [this, window](const UnsavedText& text) {
        TellOnce(store_.Keep(DocumentOf(window), PathOrTitle(*window), window->Text()));
        window->SetText(text.copy.text);
    });
    workbench_.dialogs.Run(dialog);
}

/// Puts the text into the window of its file, as a change that can be undone.
void RecoveryKeeper::TakeBack(const UnsavedText& unsaved) {
    const QFileInfo file(unsaved.copy.path);
    SourceWindow* window = unsaved.copy.path.isEmpty() || !file.exists()
                               ? files_.NewFile()
                               : files_.OpenFile(file.absolutePath(), file.fileName());
    if (window == nullptr) window = files_.NewFile();
    const QString problem = store_.Restore(unsaved, DocumentOf(window), window->Text());
    if (!problem.isEmpty()) return workbench_.dialogs.ShowMessage(window, problem);
    window->SetText(unsaved.copy.text);
}

void RecoveryKeeper::OfferReload(const QString& path) {
    SourceWindow* window = files_.Find(path);
    if (window == nullptr || !QFileInfo::exists(path)) return;
    const QString name = window->FileTitle();
    const QString question =
        window->SourceChanged()
            ? name +
                  " was changed by another program, and here too. Load it again? What you "
                  "typed is kept among its copies and can be undone to."
            : name + " was changed by another program. Load it again?";
    if (!workbench_.dialogs.AskYesNo(window, question)) return;
    if (window->SourceChanged())
        TellOnce(store_.Keep(DocumentOf(window), PathOrTitle(*window), window->Text()));
    window->Reload();
}

}  // namespace zentro
