#pragma once

#include <QDialog>
#include <QList>
#include <QString>

#include "ui/support/dialogs.h"

namespace zentro {

struct SystemDetail {
    QString name;
    QString value;
};

/// What can be found out about this computer. What is not known is left out.
QList<SystemDetail> CollectSystemDetails();

/// The details, one a line, or that there are none.
QString SystemDetailsText(const QList<SystemDetail>& details);

/// The name, the version and the licence of the program, and details of this computer to pass on
/// with a question.
class AboutDialog : public QDialog {
    Q_OBJECT

  public:
    /// `dialogs` outlives it.
    explicit AboutDialog(Dialogs& dialogs, QWidget* parent = nullptr);

  private:
    QWidget* MakeButtons();
    void ShowSystemInfo();

    Dialogs& dialogs_;
};

/// A dialog with a text to read and to copy.
class SystemInfoDialog : public QDialog {
    Q_OBJECT

  public:
    explicit SystemInfoDialog(const QString& text, QWidget* parent = nullptr);
};

}  // namespace zentro
