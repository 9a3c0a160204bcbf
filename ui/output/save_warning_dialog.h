#pragma once

#include <QDialog>

class QCheckBox;

namespace zentro {

enum class SaveWarningAnswer { Save, CompileAsSaved, Neither };

/// Warns that a changed file is going to be saved for a compile. Escape and the close button stop
/// the compile.
class SaveWarningDialog : public QDialog {
    Q_OBJECT

  public:
    /// `isOnDisk`: the file was saved before, so that there is something to compile without saving.
    SaveWarningDialog(const QString& fileName, bool isOnDisk, QWidget* parent);

    bool OKPressed() const { return answer_ == SaveWarningAnswer::Save; }
    SaveWarningAnswer Answer() const { return answer_; }
    /// Whether the user wants no such warning any more, whichever button was pressed.
    bool DontShowAgain() const;

  private:
    void TakeAnswer(SaveWarningAnswer answer);

    SaveWarningAnswer answer_ = SaveWarningAnswer::Neither;
    QCheckBox* dontShow_;
};

}  // namespace zentro
