#pragma once

#include <QDialog>

class QCheckBox;

namespace zentro {

/// Warns that a changed file is going to be saved for a compile.
class SaveWarningDialog : public QDialog {
    Q_OBJECT

  public:
    SaveWarningDialog(const QString& fileName, QWidget* parent);

    bool OKPressed() const { return result() == Accepted; }
    /// Whether the user wants no such warning any more, whichever button was pressed.
    bool DontShowAgain() const;

  private:
    QCheckBox* dontShow_;
};

}  // namespace zentro
