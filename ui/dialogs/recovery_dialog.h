#pragma once

#include <QDialog>
#include <vector>

#include "desktop/disk.h"
#include "desktop/recovery_store.h"
#include "desktop/text_difference.h"

class QDialogButtonBox;
class QLabel;
class QPlainTextEdit;
class QPushButton;
class QTreeWidget;

namespace zentro {

/// Offers what an earlier run of the program left unsaved, with what differs from the files on the
/// disk. Each text can be recovered or discarded, and all at once; those that are left when the
/// dialog closes stay for the next time.
class RecoveryDialog : public QDialog {
    Q_OBJECT

  public:
    /// The disk outlives the dialog.
    RecoveryDialog(std::vector<UnsavedText> texts, Disk& disk, QWidget* parent = nullptr);

    /// The texts are copies from before: one can be taken back, and all stay as they are.
    void OfferOnlyRecovery();

  signals:
    /// For each text that was selected when the button was pressed, those to recover from the last
    /// in the list up.
    void RecoverChosen(const UnsavedText& text);
    void DiscardChosen(const UnsavedText& text);

  private:
    void SetUpList();
    void SetUpDifference();
    QDialogButtonBox* MakeButtons();
    void FillList();
    void ShowDifference();
    void ShowLines(const std::vector<DifferenceLine>& lines);
    std::vector<UnsavedText> TakeSelected();
    void Recover();
    void Discard();
    void CloseWhenDone();

    Disk& disk_;
    std::vector<UnsavedText> texts_;  ///< an item of the list has the index of its text
    bool onlyOne_ = false;            ///< one text is taken back, then the dialog is done
    QLabel* explanation_;
    QTreeWidget* list_;
    QLabel* summary_;
    QPlainTextEdit* difference_;
    QPushButton* recover_ = nullptr;
    QPushButton* recoverAll_ = nullptr;
    QPushButton* discard_ = nullptr;
    QPushButton* discardAll_ = nullptr;
};

}  // namespace zentro
