#include "ui/shell/source_files.h"

#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QDir>
#include <QFileInfo>
#include <QMouseEvent>
#include <QTabBar>

#include "ui/editor/source_window.h"
#include "ui/support/child_windows.h"
#include "ui/support/dialogs.h"
#include "ui/support/icons.h"

namespace zentro {

namespace {

/// A file has one path, however it was named.
QString Canonical(const QString& path) {
    const QFileInfo file(path);
    const QString canonical = file.canonicalFilePath();
    return canonical.isEmpty() ? QDir::cleanPath(file.absoluteFilePath()) : canonical;
}

QString PathOf(const SourceWindow& window) {
    return QDir(window.PathName()).filePath(window.FileName());
}

}  // namespace

SourceFiles::SourceFiles(Workbench& workbench, QTabBar& tabs, Surroundings surroundings,
                         QObject* parent)
    : QObject(parent), workbench_(workbench), tabs_(tabs), surroundings_(std::move(surroundings)) {
    tabs_.installEventFilter(this);
    connect(&tabs_, &QTabBar::tabBarClicked, this, [this](int index) {
        if (index >= 0) surroundings_.bringToFront(windows_[index]);
    });
    connect(&tabs_, &QTabBar::currentChanged, this, [this](int index) {
        if (index >= 0 && index < windows_.size()) surroundings_.bringToFront(windows_[index]);
    });
    connect(&tabs_, &QTabBar::tabCloseRequested, this,
            [this](int index) { CloseChildWindow(windows_[index]); });
}

SourceFiles::~SourceFiles() = default;

SourceWindow* SourceFiles::NewFile() {
    auto* window = new SourceWindow(workbench_);
    window->NewFile(++lastNewFile_);
    Add(window);
    return window;
}

SourceWindow* SourceFiles::OpenFile(const QString& folder, const QString& name) {
    if (SourceWindow* open = Find(QDir(folder).filePath(name))) {
        surroundings_.bringToFront(open);
        return open;
    }
    auto* window = new SourceWindow(workbench_);
    if (!window->LoadFile(folder, name)) {
        delete window;
        return nullptr;
    }
    Add(window);
    RememberFile(*window);
    return window;
}

SourceWindow* SourceFiles::Find(const QString& path) const {
    const QString wanted = Canonical(path);
    for (SourceWindow* window : windows_) {
        if (!window->IsNewFile() && Canonical(PathOf(*window)) == wanted) return window;
    }
    return nullptr;
}

SourceWindow* SourceFiles::Front() const {
    return qobject_cast<SourceWindow*>(surroundings_.front());
}

SourceWindow* SourceFiles::Current() const {
    const int index = tabs_.currentIndex();
    return index >= 0 && index < windows_.size() ? windows_[index] : nullptr;
}

QList<SourceWindow*> SourceFiles::Changed() const {
    QList<SourceWindow*> changed;
    for (SourceWindow* window : windows_) {
        if (window->SourceChanged()) changed += window;
    }
    return changed;
}

int SourceFiles::IndexOf(const SourceWindow* window) const {
    for (int i = 0; i < windows_.size(); ++i) {
        if (windows_[i] == window) return i;
    }
    return -1;
}

void SourceFiles::Add(SourceWindow* window) {
    windows_ += window;
    const QSignalBlocker noFront(&tabs_);
    tabs_.addTab(window->FileTitle());
    surroundings_.addChild(window);
    window->PositionForm();
    window->installEventFilter(this);
    connect(window, &SourceWindow::DocStatsChanged, this, &SourceFiles::StatsChanged);
    connect(window, &SourceWindow::SourceChangedChanged, this,
            [this, window] { UpdateTab(window); });
    connect(window, &SourceWindow::TitleChanged, this, [this, window] { UpdateTab(window); });
    connect(window, &SourceWindow::FilesDropped, this, [this](const QStringList& paths) {
        for (const QString& path : paths) {
            emit FileDropped(path);
        }
    });
    connect(window, &SourceWindow::FormClosing, this, [this, window] { Remove(window); });
    UpdateTab(window);
    emit Added(window);
    surroundings_.bringToFront(window);
    ShowTab(window);
}

void SourceFiles::Remove(SourceWindow* window) {
    const int index = IndexOf(window);
    if (index < 0) return;
    window->disconnect(this);
    window->removeEventFilter(this);
    windows_.removeAt(index);
    {
        const QSignalBlocker noFront(&tabs_);
        tabs_.removeTab(index);
    }
    if (main_ == window) main_ = nullptr;
    UpdateKeys();
    emit Closed(window);
    emit FilesChanged();
}

void SourceFiles::ShowTab(SourceWindow* window) {
    const QSignalBlocker noFront(&tabs_);
    const int index = IndexOf(window);
    if (index >= 0) tabs_.setCurrentIndex(index);
}

void SourceFiles::UpdateTab(SourceWindow* window) {
    const int index = IndexOf(window);
    if (index < 0) return;
    tabs_.setTabText(index, window->FileTitle() + (window->SourceChanged() ? "*" : ""));
    tabs_.setTabToolTip(index, window->IsNewFile() ? QString("Not saved yet") : PathOf(*window));
    UpdateKeys();
    emit FilesChanged();
}

void SourceFiles::UpdateKeys() {
    for (int i = 0; i < windows_.size(); ++i) {
        const bool isMain = windows_[i] == main_;
        tabs_.setTabIcon(i, isMain ? ThemedIcon("key") : QIcon());
        tabs_.setTabWhatsThis(i, isMain ? "The file to compile" : "");
        tabs_.setAccessibleTabName(i, windows_[i]->FileTitle() +
                                          (windows_[i]->SourceChanged() ? ", changed" : "") +
                                          (isMain ? ", the file to compile" : ""));
    }
}

void SourceFiles::MarkTabAt(const QPoint& position) {
    const int pressed = tabs_.tabAt(position);
    if (pressed >= 0) tabs_.setCurrentIndex(pressed);
    if (tabs_.currentIndex() >= 0) SetMainFile(tabs_.currentIndex());
}

bool SourceFiles::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &tabs_ && event->type() == QEvent::MouseButtonPress) {
        const auto* press = static_cast<QMouseEvent*>(event);
        if (press->button() != Qt::RightButton) return false;
        MarkTabAt(press->position().toPoint());
        return true;
    }
    if (event->type() == QEvent::Close) {
        auto* window = qobject_cast<SourceWindow*>(watched);
        if (window != nullptr && !MayCloseWindow(*window)) {
            event->ignore();
            return true;
        }
    }
    return false;
}

void SourceFiles::RememberFile(const SourceWindow& window) {
    workbench_.settings.SaveSetting(SettingNumber::LastSourceName, window.FileName().toStdString());
    workbench_.settings.SaveSetting(SettingNumber::LastSourceFolder,
                                    window.PathName().toStdString());
}

void SourceFiles::NoteSaved(SourceWindow& window) {
    RememberFile(window);
    emit Saved(&window);
}

bool SourceFiles::SaveWindow(SourceWindow& window) {
    if (window.SaveFile() != SaveResult::Saved) return false;
    NoteSaved(window);
    return true;
}

void SourceFiles::SaveFront() {
    SaveFrontBy(&SourceWindow::SaveFile, "File Save Cancelled as requested");
}

void SourceFiles::SaveFrontAs() {
    SaveFrontBy(&SourceWindow::SaveFileAs, "File Save As Cancelled as requested");
}

void SourceFiles::SaveFrontBy(SaveResult (SourceWindow::*save)(), const char* cancelled) {
    SourceWindow* window = Front();
    if (window == nullptr) return workbench_.dialogs.ShowMessage(nullptr, "Nothing to Save!");
    const SaveResult result = (window->*save)();
    if (result == SaveResult::Cancelled) workbench_.dialogs.ShowMessage(window, cancelled);
    if (result == SaveResult::Saved) NoteSaved(*window);
}

bool SourceFiles::SaveAll() {
    bool all = true;
    const QList<SourceWindow*> windows = windows_;
    for (SourceWindow* window : windows) {
        if (window->SourceChanged() || window->IsNewFile()) all = SaveWindow(*window) && all;
    }
    return all;
}

bool SourceFiles::MayCloseWindow(SourceWindow& window) {
    if (!window.SourceChanged()) return true;
    const YesNoAnswer answer =
        workbench_.dialogs.AskYesNoOrNeither(&window, "Source File has changed. Save changes?");
    return answer == YesNoAnswer::No || (answer == YesNoAnswer::Yes && SaveWindow(window));
}

bool SourceFiles::MayClose() {
    const QList<SourceWindow*> changed = Changed();
    if (changed.isEmpty()) return true;
    QStringList names;
    for (const SourceWindow* window : changed) {
        names += window->FileTitle();
    }
    switch (workbench_.dialogs.AskSaveChanges(&tabs_, names)) {
        case SaveAnswer::Cancel: return false;
        case SaveAnswer::Discard: return true;
        case SaveAnswer::Save: break;
    }
    bool all = true;
    for (SourceWindow* window : changed) {
        all = SaveWindow(*window) && all;
    }
    return all;
}

void SourceFiles::CloseAll() {
    const QList<SourceWindow*> windows = windows_;
    for (SourceWindow* window : windows) {
        window->removeEventFilter(this);
        CloseChildWindow(window);
    }
}

SourceWindow* SourceFiles::Main() const {
    return main_;
}

void SourceFiles::ResetMainFile() {
    main_ = nullptr;
    UpdateKeys();
}

QList<OpenFileName> SourceFiles::Names() const {
    QList<OpenFileName> names;
    for (const SourceWindow* window : windows_) {
        names += {window->FileTitle(), window->PathName()};
    }
    return names;
}

std::optional<int> SourceFiles::FrontFile() const {
    return Current() == nullptr ? std::nullopt : std::optional(tabs_.currentIndex());
}

std::optional<int> SourceFiles::MainFile() const {
    const int index = IndexOf(main_);
    if (main_ == nullptr || index < 0) return std::nullopt;
    return index;
}

void SourceFiles::SetMainFile(int file) {
    main_ = windows_.at(file);
    UpdateKeys();
    surroundings_.bringToFront(main_);
}

std::optional<int> SourceFiles::OpenFromDisk(const QString& folder, const QString& name) {
    const SourceWindow* window = OpenFile(folder, name);
    if (window == nullptr) return std::nullopt;
    return IndexOf(window);
}

bool SourceFiles::HasChanged(int file) const {
    return windows_.at(file)->SourceChanged();
}
bool SourceFiles::WasNeverSaved(int file) const {
    return windows_.at(file)->IsNewFile();
}
bool SourceFiles::Save(int file) {
    return SaveWindow(*windows_.at(file));
}

int SourceFiles::TabCount() const {
    return static_cast<int>(windows_.size());
}
int SourceFiles::FrontTab() const {
    return tabs_.currentIndex() + 1;
}

void SourceFiles::BringToFront(int tab) {
    tabs_.setCurrentIndex(tab - 1);
    surroundings_.bringToFront(windows_.at(tab - 1));
}

int SourceFiles::Find(const QString& text, bool continueSearch, FindOptions options) {
    return Current() == nullptr ? -1 : Current()->Find(text, continueSearch, options);
}

bool SourceFiles::ReplaceIfSelected(const QString& text, const QString& replacement) {
    return Current() != nullptr && Current()->ReplaceIfSelected(text, replacement);
}

void SourceFiles::BeginUndoGroup() {
    if (Current() != nullptr) Current()->BeginUndoGroup();
}

void SourceFiles::EndUndoGroup() {
    if (Current() != nullptr) Current()->EndUndoGroup();
}

}  // namespace zentro
