#pragma once

#include <QDialog>
#include <QString>
#include <vector>

#include "desktop/example_programs.h"

class QDialogButtonBox;
class QTreeWidget;

namespace zentro {

/// Offers the example programs, each with its picture and what it does.
class ExamplesDialog : public QDialog {
    Q_OBJECT

  public:
    ExamplesDialog(std::vector<ExampleProgram> examples, QWidget* parent);

    /// The path of the program that was chosen when the dialog was accepted. Empty: one that is not
    /// in the list is wanted.
    QString Chosen() const { return chosen_; }

  private:
    void FillList();
    QDialogButtonBox* MakeButtons();
    void TakeFromList();

    std::vector<ExampleProgram> examples_;  ///< an item of the list has the index of its program
    QTreeWidget* list_;
    QString chosen_;
};

}  // namespace zentro
