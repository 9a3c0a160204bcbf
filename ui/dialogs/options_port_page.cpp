#include "ui/dialogs/options_port_page.h"

#include <QButtonGroup>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "comms/virtual_board_link.h"

namespace zentro {

namespace {

constexpr int kOther = kFixedPorts + 1;  // the id of its button; COM1 to COM4 have their number
constexpr int kRefreshEvery = 1000;      // milliseconds
constexpr int kColumnSpace = 12;         // pixels between columns
constexpr const char* kButtonNames[] = {"optCom1", "OptCom2", "OptCom3", "OptCom4", "OptOther"};

QString Hexadecimal(std::uint16_t number) {
    return QString("%1").arg(number, 4, 16, QChar('0')).toUpper();
}

QString UsbText(const UsbIdentity& usb) {
    QString text = Hexadecimal(usb.vendor) + ':' + Hexadecimal(usb.product);
    if (usb.serialNumber.empty()) return text;
    return text + ", serial number " + QString::fromStdString(usb.serialNumber);
}

}  // namespace

std::vector<PortChoice> PortChoices(const std::vector<PortDescription>& present) {
    std::vector<PortChoice> choices;
    choices.reserve(present.size() + 1);
    for (const PortDescription& port : present) {
        choices.push_back({QString::fromStdString(port.name),
                           QString::fromStdString(port.description),
                           port.usb ? UsbText(*port.usb) : QString()});
    }
    choices.push_back({kVirtualBoardPort, "A board inside this program", {}});
    return choices;
}

OptionsPortPage::OptionsPortPage(PortLister listPorts, OptionsState& state, QWidget* parent)
    : QWidget(parent),
      listPorts_(std::move(listPorts)),
      state_(state),
      openedWith_(state.portName) {
    auto* box = new QGroupBox("Communications Port to use");
    auto* inBox = new QVBoxLayout(box);
    inBox->addWidget(MakeButtons());
    inBox->addWidget(MakePortList(), 1);
    working_ = new QLabel;
    working_->setObjectName("lblPortToUse");
    working_->setTextFormat(Qt::PlainText);
    inBox->addWidget(working_);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(box);
    ShowPort(state_.portName);
    SetWorkingPort(state_.portName);
}

QWidget* OptionsPortPage::MakeButtons() {
    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins({});
    buttons_ = new QButtonGroup(this);
    for (int id = 1; id <= kOther; ++id) {
        auto* button = new QRadioButton(id == kOther ? "Other" : FixedPortName(id));
        button->setObjectName(kButtonNames[id - 1]);
        button->setAccessibleName(button->text());
        buttons_->addButton(button, id);
        layout->addWidget(button);
    }
    other_ = new QLineEdit;
    other_->setObjectName("txtOtherComport");
    other_->setAccessibleName("Name of the other port");
    other_->setPlaceholderText("COM5, /dev/ttyUSB0");
    layout->addWidget(other_, 1);
    connect(other_, &QLineEdit::textChanged, this, &OptionsPortPage::TypedOther);
    connect(buttons_, &QButtonGroup::idClicked, this, [this](int id) {
        if (id == kOther) return other_->setFocus();
        ShowPort(FixedPortName(id));
        SetWorkingPort(FixedPortName(id));
    });
    return row;
}

QWidget* OptionsPortPage::MakePortList() {
    auto* area = new QWidget;
    list_ = new QTreeWidget;
    list_->setObjectName("lstPresentPorts");
    list_->setAccessibleName("Ports that are present");
    list_->setHeaderLabels({"Port", "Description", "USB Identity"});
    list_->setRootIsDecorated(false);
    list_->setUniformRowHeights(true);
    list_->setMinimumHeight(120);
    connect(list_, &QTreeWidget::itemSelectionChanged, this, &OptionsPortPage::ChooseListed);
    auto* title = new QLabel("&Ports that are present");
    title->setBuddy(list_);
    auto* layout = new QVBoxLayout(area);
    layout->setContentsMargins({});
    layout->addWidget(title);
    layout->addWidget(list_);
    return area;
}

/// Lets buttons and text box say the port, without taking it for the user's doing.
void OptionsPortPage::ShowPort(const QString& port) {
    const QSignalBlocker blocker(other_);
    const int fixed = FixedPort(port);
    other_->setText(fixed > 0 ? QString() : TypedPortName(port));
    if (fixed > 0 || !port.isEmpty())
        buttons_->button(fixed > 0 ? fixed : kOther)->setChecked(true);
}

void OptionsPortPage::SetWorkingPort(const QString& port) {
    const int fixed = FixedPort(port);
    state_.portName = fixed > 0 ? FixedPortName(fixed) : TypedPortName(port.trimmed());
    MarkWorkingPort();
}

void OptionsPortPage::TypedOther(const QString& typed) {
    const QString text = TypedPortName(typed);
    if (text != typed) {
        const QSignalBlocker blocker(other_);
        other_->setText(text);
    }
    if (text.trimmed().isEmpty()) return SetWorkingPort(openedWith_);
    buttons_->button(kOther)->setChecked(true);
    SetWorkingPort(text);
}

void OptionsPortPage::ChooseListed() {
    const auto chosen = list_->selectedItems();
    if (chosen.isEmpty()) return;
    const QString port = chosen.first()->text(0);
    ShowPort(port);
    SetWorkingPort(port);
}

void OptionsPortPage::ListPresentPorts() {
    present_ = listPorts_();
    const std::vector<PortChoice> choices = PortChoices(present_);
    if (choices == choices_) return;
    choices_ = choices;
    const QSignalBlocker blocker(list_);
    list_->clear();
    for (const PortChoice& choice : choices_) {
        auto* item = new QTreeWidgetItem({choice.name, choice.description, choice.usb});
        list_->addTopLevelItem(item);
        for (int column = 0; column < list_->columnCount(); ++column) {
            item->setToolTip(column, item->text(column));
        }
    }
    for (int column = 0; column + 1 < list_->columnCount(); ++column) {  // the last one stretches
        list_->resizeColumnToContents(column);
        list_->setColumnWidth(column, list_->columnWidth(column) + kColumnSpace);
    }
    MarkWorkingPort();
}

/// Says which port is chosen and selects it in the list, where it is present.
void OptionsPortPage::MarkWorkingPort() {
    const QString device =
        QString::fromStdString(DevicePath(state_.portName.toStdString(), present_));
    QString text = "Port to use: " + state_.portName;
    if (device != state_.portName) text += ", which is " + device;
    working_->setText(state_.portName.isEmpty() ? "No port is chosen." : text);

    const QSignalBlocker blocker(list_);
    const auto found = list_->findItems(device, Qt::MatchFixedString);
    if (found.isEmpty()) return list_->clearSelection();
    list_->setCurrentItem(found.first());
}

void OptionsPortPage::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    ListPresentPorts();
    timer_ = startTimer(kRefreshEvery);
}

void OptionsPortPage::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    killTimer(timer_);
    timer_ = 0;
}

void OptionsPortPage::timerEvent(QTimerEvent*) {
    ListPresentPorts();
}

}  // namespace zentro
