#pragma once

#include <QDialog>
#include <QString>
#include <QStringList>
#include <optional>

#include "ui/support/workbench.h"

class QListWidget;
class QPushButton;

namespace zentro {

/// An open source file: its name as its tab shows it, and its folder, which is empty when it was
/// never saved.
struct OpenFileName {
    QString name;
    QString folder;
};

/// Asks which file a program begins with: one of the open ones or one from disk.
class CompileSelectDialog : public QDialog {
    Q_OBJECT

  public:
    /// The files in the order of their tabs. The file in front, if there is one, is selected.
    CompileSelectDialog(const Workbench& workbench, const QList<OpenFileName>& openFiles,
                        std::optional<int> front, QWidget* parent);

    bool OKPressed() const { return result() == Accepted; }
    const QString& ChosenFileName() const { return chosen_.name; }
    const QString& ChosenPathName() const { return chosen_.folder; }
    bool IsAlreadyOpen() const { return chosenIndex_ >= 0; }
    /// The place of the chosen file among the open ones; -1 for one from disk.
    int ChosenIndex() const { return chosenIndex_; }

  private:
    void FillList();
    void BuildLayout();
    void TakeFromList();
    void SelectFromDisk();

    const Workbench& workbench_;
    QList<OpenFileName> openFiles_;
    OpenFileName chosen_;
    int chosenIndex_ = -1;
    QListWidget* list_;
    QPushButton* fromDisk_;
    QPushButton* ok_;
    QPushButton* cancel_;
};

}  // namespace zentro
