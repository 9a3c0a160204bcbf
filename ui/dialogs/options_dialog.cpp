#include "ui/dialogs/options_dialog.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QScreen>
#include <QShowEvent>
#include <QStackedWidget>
#include <QTabBar>
#include <QVBoxLayout>

#include "ui/dialogs/options_pages.h"
#include "ui/dialogs/options_port_page.h"
#include "ui/support/dialogs.h"

namespace zentro {

OptionsDialog::OptionsDialog(Workbench& workbench, PortLister listPorts, QWidget* parent)
    : QDialog(parent), workbench_(workbench), tabs_(new QTabBar), frames_(new QStackedWidget) {
    setObjectName("frmOptions");
    setWindowTitle("Options");
    QStringList failures;
    state_ = LoadOptions(workbench.settings, *workbench.disk, failures);

    tabs_->setObjectName("TabStrip1");
    tabs_->setAccessibleName("Pages of the options");
    tabs_->setExpanding(false);
    AddPage("GeneralOptions", "&General Options", "FrameGeneralOptions",
            new OptionsGeneralPage(workbench.dialogs, *workbench.disk, state_));
    AddPage("Kinetron", "&Kinetron", "FrameKinetron",
            new OptionsPortPage(std::move(listPorts), state_));
    AddPage("Advanced", "&Advanced", "FrameAdvanced",
            new OptionsAdvancedPage(workbench.dialogs, state_));
    connect(tabs_, &QTabBar::currentChanged, frames_, &QStackedWidget::setCurrentIndex);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(tabs_);
    layout->addWidget(frames_, 1);
    layout->addWidget(MakeButtons());
    for (const QString& failure : failures)
        workbench_.dialogs.ShowMessage(parent, failure);
}

void OptionsDialog::AddPage(const QString& key, const QString& title, const char* frameName,
                            QWidget* page) {
    page->setObjectName(frameName);
    tabs_->setTabData(tabs_->addTab(title), key);
    frames_->addWidget(page);
}

QWidget* OptionsDialog::MakeButtons() {
    auto* row = new QWidget;
    auto* ok = new QPushButton("OK");
    ok->setObjectName("cmdOK");
    ok->setAccessibleName("OK");
    ok->setDefault(true);
    auto* cancel = new QPushButton("&Cancel");
    cancel->setObjectName("cmdCancel");
    cancel->setAccessibleName("Cancel");
    connect(ok, &QPushButton::clicked, this, &OptionsDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &OptionsDialog::reject);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins({});
    layout->addStretch();
    layout->addWidget(ok);
    layout->addWidget(cancel);
    return row;
}

void OptionsDialog::accept() {
    SaveOptions(state_, workbench_.settings);
    const std::string error = workbench_.settings.SaveSettings();
    if (!error.empty()) workbench_.dialogs.ShowMessage(this, QString::fromStdString(error));
    QDialog::accept();
}

void OptionsDialog::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (event->spontaneous()) return;
    const QRect screen = this->screen()->availableGeometry();
    QRect place = frameGeometry();
    place.moveCenter(screen.center());
    move(place.topLeft().x() < screen.left() ? screen.topLeft() : place.topLeft());
}

}  // namespace zentro
