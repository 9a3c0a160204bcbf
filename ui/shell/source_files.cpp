#include "ui/shell/source_files.h"

#include <QCloseEvent>
#include <QDir>
#include <QFileInfo>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QTabBar>

#include "ui/editor/source_window.h"
#include "ui/support/child_windows.h"
#include "ui/support/dialogs.h"
#include "ui/support/icons.h"

namespace zentro {

SourceFiles::SourceFiles(Workbench& workbench, Programs& programs, QTabBar& tabs,
                         Surroundings surroundings, QObject* parent)
    : QObject(parent),
      workbench_(workbench),
      programs_(programs),
      tabs_(tabs),
      surroundings_(std::move(surroundings)) {
    tabs_.installEventFilter(this);
    const auto bringToFront = [this](int index) {
        if (index >= 0) BringToFront(index + 1);
    };
    connect(&tabs_, &QTabBar::tabBarClicked, this, bringToFront);
    connect(&tabs_, &QTabBar::currentChanged, this, bringToFront);
    connect(&tabs_, &QTabBar::tabCloseRequested, this,
            [this](int index) { CloseChildWindow(Windows().at(index)); });
    connect(&programs_, &Programs::Changed, this, &SourceFiles::ShowTabs);
}

SourceFiles::~SourceFiles() = default;

SourceWindow* SourceFiles::NewFile() {
    auto* window = new SourceWindow(workbench_, programs_);
    window->NewFile(++lastNewFile_);
    Add(window);
    return window;
}

SourceWindow* SourceFiles::OpenFile(const QString& folder, const QString& name) {
    if (SourceWindow* open = Find(QDir(folder).filePath(name))) {
        surroundings_.bringToFront(open);
        return open;
    }
    auto* window = new SourceWindow(workbench_, programs_);
    if (!window->LoadFile(folder, name)) {
        delete window;
        return nullptr;
    }
    Add(window);
    RememberFile(*window);
    return window;
}

SourceWindow* SourceFiles::Open(const QString& path) {
    const QFileInfo file(path);
    return OpenFile(file.absolutePath(), file.fileName());
}

SourceWindow* SourceFiles::Find(const QString& path) const {
    const zentro::OpenFile* file = programs_.Find(path);
    return file == nullptr ? nullptr : WindowOf(file->id);
}

SourceWindow* SourceFiles::WindowOf(FileId id) const {
    for (SourceWindow* window : windows_) {
        if (window->Id() == id) return window;
    }
    return nullptr;
}

SourceWindow* SourceFiles::Front() const {
    return programs_.Front() == nullptr ? nullptr : WindowOf(programs_.Front()->id);
}

QList<SourceWindow*> SourceFiles::Windows() const {
    QList<SourceWindow*> windows;
    for (const zentro::OpenFile& file : programs_.Files()) {
        if (SourceWindow* window = WindowOf(file.id)) windows += window;
    }
    return windows;
}

void SourceFiles::BringToFront(FileId id) {
    if (SourceWindow* window = WindowOf(id)) surroundings_.bringToFront(window);
}

void SourceFiles::NoteFront(QWidget* window) {
    auto* source = qobject_cast<SourceWindow*>(window);
    if (source != nullptr) programs_.SetFront(source->Id());
}

void SourceFiles::Add(SourceWindow* window) {
    windows_ += window;
    connect(window, &QObject::destroyed, this, [this, window] { windows_.removeAll(window); });
    connect(window, &SourceWindow::DocStatsChanged, this, &SourceFiles::StatsChanged);
    connect(window, &SourceWindow::FilesDropped, this, [this](const QStringList& paths) {
        for (const QString& path : paths)
            emit FileDropped(path);
    });
    connect(window, &SourceWindow::FormClosing, this,
            [this, window] { programs_.Remove(window->Id()); });
    window->installEventFilter(this);
    emit Opened(window);
    surroundings_.addChild(window);
    surroundings_.bringToFront(window);
    ShowTabs();
}

/// The tabs as the programs say.
void SourceFiles::ShowTabs() {
    const QSignalBlocker noFront(&tabs_);
    const std::vector<zentro::OpenFile>& files = programs_.Files();
    const int count = static_cast<int>(files.size());
    while (tabs_.count() > count)
        tabs_.removeTab(tabs_.count() - 1);
    while (tabs_.count() < count)
        tabs_.addTab({});
    for (int i = 0; i < count; ++i)
        ShowTab(i, files[static_cast<std::size_t>(i)]);
}

void SourceFiles::ShowTab(int index, const zentro::OpenFile& file) {
    const zentro::OpenFile* main = programs_.Main();
    const bool isMain = main != nullptr && main->id == file.id;
    tabs_.setTabText(index, file.name + (file.IsChanged() ? "*" : ""));
    tabs_.setTabToolTip(index, file.NeverSaved() ? tr("Not saved yet")
                               : file.disk == DiskState::Gone
                                   ? tr("%1 is not on the disk any more").arg(file.Path())
                                   : file.Path());
    tabs_.setTabIcon(index, isMain ? ThemedIcon("key") : QIcon());
    tabs_.setTabWhatsThis(index, isMain ? tr("The file to compile") : QString());
    tabs_.setAccessibleTabName(index, file.name + (file.IsChanged() ? tr(", changed") : QString()) +
                                          (isMain ? tr(", the file to compile") : QString()));
    if (programs_.Front() == &file) tabs_.setCurrentIndex(index);
}

void SourceFiles::MarkTabAt(const QPoint& position) {
    const int pressed = tabs_.tabAt(position);
    if (pressed >= 0) BringToFront(pressed + 1);
    if (programs_.Front() != nullptr) programs_.SetMain(programs_.Front()->id);
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

/// Only a clear Yes or No closes the window; whoever puts the question away wants to think.
bool SourceFiles::MayCloseWindow(SourceWindow& window) {
    if (!window.SourceChanged()) return true;
    const QString question = tr("Source File has changed. Save changes?");
    switch (workbench_.dialogs.AskYesNoOrNeither(&window, question + "\n\n" + window.FileName())) {
        case YesNoAnswer::Yes: return Save(window.Id());
        case YesNoAnswer::No: return true;
        case YesNoAnswer::Neither: break;
    }
    return false;
}

void SourceFiles::RememberFile(const SourceWindow& window) {
    workbench_.settings.SaveSetting(SettingNumber::LastSourceName, window.FileName().toStdString());
    workbench_.settings.SaveSetting(SettingNumber::LastSourceFolder,
                                    window.PathName().toStdString());
}

bool SourceFiles::Save(FileId id) {
    SourceWindow* window = WindowOf(id);
    if (window == nullptr) return false;
    // Whoever is asked for a name sees of which text.
    if (window->AsksForName()) surroundings_.bringToFront(window);
    if (window->SaveFile() != SaveResult::Saved) return false;
    RememberFile(*window);
    return true;
}

void SourceFiles::SaveFront() {
    SaveFrontBy(&SourceWindow::SaveFile, tr("File Save Cancelled as requested"));
}

void SourceFiles::SaveFrontAs() {
    SaveFrontBy(&SourceWindow::SaveFileAs, tr("File Save As Cancelled as requested"));
}

void SourceFiles::SaveFrontBy(SaveResult (SourceWindow::*save)(), const QString& cancelled) {
    SourceWindow* window = Front();
    if (window == nullptr) return workbench_.dialogs.ShowMessage(nullptr, tr("Nothing to Save!"));
    const SaveResult result = (window->*save)();
    if (result == SaveResult::Cancelled) workbench_.dialogs.ShowMessage(window, cancelled);
    if (result == SaveResult::Saved) RememberFile(*window);
}

bool SourceFiles::SaveAll() {
    bool all = true;
    for (const SourceWindow* window : Windows()) {
        if (window->SourceChanged() || window->IsNewFile()) all = Save(window->Id()) && all;
    }
    return all;
}

bool SourceFiles::MayClose() {
    QStringList names;
    QList<FileId> changed;
    for (const zentro::OpenFile& file : programs_.Files()) {
        if (!file.IsChanged()) continue;
        names += file.name;
        changed += file.id;
    }
    if (changed.isEmpty()) return true;
    switch (workbench_.dialogs.AskSaveChanges(&tabs_, names)) {
        case SaveAnswer::Cancel: return false;
        case SaveAnswer::Discard: return true;
        case SaveAnswer::Save: break;
    }
    return std::ranges::all_of(changed, [this](FileId id) { return Save(id); });
}

void SourceFiles::CloseAll() {
    for (SourceWindow* window : Windows()) {
        window->removeEventFilter(this);
        CloseChildWindow(window);
    }
}

int SourceFiles::TabCount() const {
    return static_cast<int>(programs_.Files().size());
}

int SourceFiles::FrontTab() const {
    return tabs_.currentIndex() + 1;
}

void SourceFiles::BringToFront(int tab) {
    const auto index = static_cast<std::size_t>(tab - 1);
    if (index < programs_.Files().size()) BringToFront(programs_.Files()[index].id);
}

int SourceFiles::Find(const QString& text, bool continueSearch, FindOptions options) {
    return Front() == nullptr ? -1 : Front()->Find(text, continueSearch, options);
}

bool SourceFiles::ReplaceIfSelected(const QString& text, const QString& replacement) {
    return Front() != nullptr && Front()->ReplaceIfSelected(text, replacement);
}

void SourceFiles::BeginUndoGroup() {
    if (Front() != nullptr) Front()->BeginUndoGroup();
}

void SourceFiles::EndUndoGroup() {
    if (Front() != nullptr) Front()->EndUndoGroup();
}

}  // namespace zentro
