#pragma once

#include <QDialog>
#include <functional>

class QLabel;
class QLineEdit;
class QPushButton;

namespace zentro {

/// Asks for a new name and says at once why one cannot be taken.
class RenameDialog : public QDialog {
    Q_OBJECT

  public:
    /// Why a name cannot be taken; empty: it can.
    using Check = std::function<QString(const QString&)>;

    /// `places`: where the name stands, in a sentence.
    RenameDialog(const QString& name, const QString& places, Check check,
                 QWidget* parent = nullptr);

    QString NewName() const;

  private:
    void SetUpProblem();
    void BuildLayout(const QString& places);
    void Look();

    QString name_;
    Check check_;
    QLineEdit* newName_;
    QLabel* problem_;
    QPushButton* ok_ = nullptr;
};

}  // namespace zentro
