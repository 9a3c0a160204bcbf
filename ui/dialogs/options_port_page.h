#pragma once

#include <QString>
#include <QWidget>
#include <vector>

#include "comms/port_list.h"
#include "ui/dialogs/options_state.h"

class QButtonGroup;
class QLabel;
class QLineEdit;
class QTreeWidget;

namespace zentro {

/// A port that can be chosen, as the list shows it.
struct PortChoice {
    QString name;
    QString description;
    QString usb;  ///< "1A86:7523, serial number 5"; empty for a built-in port

    bool operator==(const PortChoice&) const = default;
};

/// The ports that are present, and the virtual board.
std::vector<PortChoice> PortChoices(const std::vector<PortDescription>& present);

/// The page of the serial port: COM1 to COM4, any other name, and the ports that are present, whose
/// list follows what is plugged in and pulled out. The state outlives the page.
class OptionsPortPage : public QWidget {
    Q_OBJECT

  public:
    OptionsPortPage(PortLister listPorts, OptionsState& state, QWidget* parent = nullptr);

  protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

  private:
    QWidget* MakeButtons();
    QWidget* MakePortList();
    void ShowPort(const QString& port);
    void SetWorkingPort(const QString& port);
    void TypedOther(const QString& typed);
    void ChooseListed();
    void ListPresentPorts();
    void MarkWorkingPort();

    PortLister listPorts_;
    OptionsState& state_;
    const QString openedWith_;  ///< what holds again when the user empties the other name
    std::vector<PortDescription> present_;
    std::vector<PortChoice> choices_;
    QButtonGroup* buttons_ = nullptr;
    QLineEdit* other_ = nullptr;
    QTreeWidget* list_ = nullptr;
    QLabel* working_ = nullptr;
    int timer_ = 0;
};

}  // namespace zentro
