#pragma once

#include <QDialog>

#include "comms/port_list.h"
#include "ui/dialogs/options_state.h"
#include "ui/support/workbench.h"

class QStackedWidget;
class QTabBar;

namespace zentro {

/// The settings that are meant for users. OK saves them all, Cancel none.
class OptionsDialog : public QDialog {
    Q_OBJECT

  public:
    /// Options that cannot be read are reported at once. The workbench outlives the dialog.
    OptionsDialog(Workbench& workbench, PortLister listPorts, QWidget* parent = nullptr);

    void accept() override;

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void AddPage(const QString& key, const QString& title, const char* frameName, QWidget* page);
    QWidget* MakeButtons();

    Workbench& workbench_;
    OptionsState state_;
    QTabBar* tabs_;
    QStackedWidget* frames_;
};

}  // namespace zentro
