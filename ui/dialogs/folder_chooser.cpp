#include "ui/dialogs/folder_chooser.h"

#include <QComboBox>
#include <QDir>
#include <QFileSystemModel>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QScrollBar>
#include <QStorageInfo>
#include <QTreeView>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

#include "ui/dialogs/options_state.h"

namespace zentro {

namespace {

/// Volumes of the system itself, on which nobody keeps programs.
bool IsSystemVolume(const QString& root) {
    constexpr std::array kSystemFolders{"/boot/", "/dev/",  "/etc/", "/proc/",
                                        "/run/",  "/snap/", "/sys/", "/var/"};
    if (root.startsWith("/run/media/")) return false;
    return std::ranges::any_of(kSystemFolders, [folder = root + '/'](const char* system) {
        return folder.startsWith(system);
    });
}

}  // namespace

QStringList DriveRoots() {
    QStringList roots;
    const auto volumes = QStorageInfo::mountedVolumes();
    for (const QStorageInfo& volume : volumes) {
        const QString root = volume.rootPath();
        if (volume.isValid() && volume.isReady() && QFileInfo(root).isDir() &&
            !IsSystemVolume(root) && !roots.contains(root))
            roots += root;
    }
    roots.sort();
    return roots;
}

FolderChooser::FolderChooser(Disk& disk, QWidget* parent)
    : QWidget(parent),
      disk_(disk),
      folders_(new QFileSystemModel(this)),
      tree_(new QTreeView),
      drives_(new QComboBox),
      selectedPath_(new QLabel) {
    auto* title = new QLabel("&Default Source Directory     (Double Click to choose)");
    title->setBuddy(tree_);
    MakeDriveList();
    MakeTree();
    selectedPath_->setObjectName("lblSelectedPath");
    selectedPath_->setAccessibleName("Chosen source directory");
    selectedPath_->setTextFormat(Qt::PlainText);
    selectedPath_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    selectedPath_->setWordWrap(true);
    selectedPath_->setMinimumHeight(2 * selectedPath_->fontMetrics().lineSpacing());

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(title);
    layout->addWidget(drives_);
    layout->addWidget(tree_, 1);
    layout->addWidget(selectedPath_);
}

void FolderChooser::MakeDriveList() {
    drives_->setObjectName("DriveDefaultSource");
    drives_->setAccessibleName("Drive");
    // One of them that hangs keeps all others waiting.
    const QStringList roots =
        disk_.Ask("/proc/mounts", Patience::Short, &DriveRoots).value_or(QStringList());
    for (const QString& root : roots)
        drives_->addItem(QDir::toNativeSeparators(root), root);
    if (roots.size() < 2) drives_->hide();
    connect(drives_, &QComboBox::activated, this, [this] {
        const QString root = drives_->currentData().toString();
        ShowInTree(root);
        Choose(root);
    });
}

void FolderChooser::MakeTree() {
    folders_->setFilter(QDir::Dirs | QDir::Drives | QDir::NoDotAndDotDot);
    folders_->setRootPath({});
    tree_->setObjectName("DirDefaultSource");
    tree_->setAccessibleName("Default source directory");
    tree_->setModel(folders_);
    tree_->setHeaderHidden(true);
    for (int column = 1; column < folders_->columnCount(); ++column)
        tree_->hideColumn(column);
    tree_->setMinimumSize(240, 120);
    connect(tree_, &QTreeView::doubleClicked, this, &FolderChooser::ChooseCurrent);
    for (QObject* part : {static_cast<QObject*>(tree_), static_cast<QObject*>(tree_->viewport()),
                          static_cast<QObject*>(tree_->verticalScrollBar())})
        part->installEventFilter(this);
    // Folders are read in the background and put in order afterwards.
    connect(folders_, &QFileSystemModel::layoutChanged, this, [this] {
        if (!shown_.isEmpty()) tree_->scrollTo(folders_->index(shown_));
    });
}

bool FolderChooser::eventFilter(QObject* watched, QEvent* event) {
    const bool key = event->type() == QEvent::KeyPress;
    if (key || event->type() == QEvent::MouseButtonPress || event->type() == QEvent::Wheel)
        shown_.clear();  // from here on the user scrolls
    if (watched != tree_ || !key) return QWidget::eventFilter(watched, event);
    const int code = static_cast<QKeyEvent*>(event)->key();
    if (code != Qt::Key_Return && code != Qt::Key_Enter) return false;
    ChooseCurrent();
    return true;  // or else Enter would press the dialog's OK
}

void FolderChooser::SetFolder(const QString& folder) {
    selectedPath_->setText(QDir::toNativeSeparators(folder));
    ShowInTree(folder);
}

void FolderChooser::ShowInTree(const QString& folder) {
    const auto root = disk_.Ask(folder + "/.", Patience::Short, [folder] {
        return QFileInfo::exists(folder) ? QStorageInfo(folder).rootPath() : QString();
    });
    if (!root) return;
    const QModelIndex index = folders_->index(folder);
    if (!index.isValid()) return;
    shown_ = folders_->filePath(index);
    tree_->setCurrentIndex(index);
    tree_->scrollTo(index);
    const int drive = drives_->findData(*root);
    if (drive >= 0) drives_->setCurrentIndex(drive);
}

void FolderChooser::ChooseCurrent() {
    if (tree_->currentIndex().isValid()) Choose(folders_->filePath(tree_->currentIndex()));
}

void FolderChooser::Choose(const QString& folder) {
    const QString path = FolderPath(QDir::toNativeSeparators(folder));
    selectedPath_->setText(path);
    emit FolderChosen(path);
}

}  // namespace zentro
