#pragma once

#include <QStringList>
#include <QWidget>

#include "desktop/disk.h"

class QComboBox;
class QFileSystemModel;
class QLabel;
class QTreeView;

namespace zentro {

/// The folders of this computer in a tree, of which a double click or Enter chooses one, and its
/// drives, of which choosing one chooses its root.
class FolderChooser : public QWidget {
    Q_OBJECT

  public:
    /// The disk outlives the object. What does not answer is not in the tree.
    explicit FolderChooser(Disk& disk, QWidget* parent = nullptr);

    /// Shows that folder as the chosen one, whether it is there or not.
    void SetFolder(const QString& folder);

    bool eventFilter(QObject* watched, QEvent* event) override;

  signals:
    /// The user has chosen a folder. It has no separator at its end, unless it is a root.
    void FolderChosen(const QString& folder);

  private:
    void Choose(const QString& folder);
    void ChooseCurrent();
    void ShowInTree(const QString& folder);
    void MakeTree();
    void MakeDriveList();

    Disk& disk_;
    QFileSystemModel* folders_;
    QTreeView* tree_;
    QComboBox* drives_;
    QLabel* selectedPath_;
    QString shown_;  ///< kept in sight until the user does something in the tree
};

/// The roots of the drives that a user can keep programs on.
QStringList DriveRoots();

}  // namespace zentro
