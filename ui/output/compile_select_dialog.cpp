#include "ui/output/compile_select_dialog.h"

#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/support/dialogs.h"

namespace zentro {

CompileSelectDialog::CompileSelectDialog(const Workbench& workbench,
                                         const QList<OpenFileName>& openFiles,
                                         std::optional<int> front, QWidget* parent)
    : QDialog(parent),
      workbench_(workbench),
      openFiles_(openFiles),
      list_(new QListWidget(this)),
      fromDisk_(new QPushButton("Select From Disk", this)),
      ok_(new QPushButton("OK", this)),
      cancel_(new QPushButton("Cancel", this)) {
    setObjectName("frmCompileSelect");
    setWindowTitle("Please Select");
    list_->setObjectName("FileList");
    list_->setAccessibleName("Open source files");
    fromDisk_->setObjectName("BtnSelectFromDisk");
    ok_->setObjectName("OKButton");
    cancel_->setObjectName("CancelButton");
    FillList();
    BuildLayout();
    ok_->setEnabled(false);
    ok_->setDefault(true);
    connect(list_, &QListWidget::itemSelectionChanged, this,
            [this] { ok_->setEnabled(!list_->selectedItems().isEmpty()); });
    // Enter takes the likely file at once. With one file there is nothing to choose.
    if (front || list_->count() == 1) list_->setCurrentRow(front.value_or(0));
    connect(list_, &QListWidget::itemActivated, this, &CompileSelectDialog::TakeFromList);
    connect(ok_, &QPushButton::clicked, this, &CompileSelectDialog::TakeFromList);
    connect(fromDisk_, &QPushButton::clicked, this, &CompileSelectDialog::SelectFromDisk);
    connect(cancel_, &QPushButton::clicked, this, &QDialog::reject);
}

/// Two files of one name are told apart by their folders.
void CompileSelectDialog::FillList() {
    for (const OpenFileName& file : openFiles_) {
        const auto count = std::ranges::count(openFiles_, file.name, &OpenFileName::name);
        const QString folder = QDir::toNativeSeparators(file.folder);
        auto* const item = new QListWidgetItem(
            count > 1 && !folder.isEmpty() ? file.name + "  -  " + folder : file.name, list_);
        item->setToolTip(folder);
    }
}

void CompileSelectDialog::BuildLayout() {
    auto* const label = new QLabel("Please select the file to begin with (Key)", this);
    label->setBuddy(list_);
    auto* const key = new QLabel(
        tr("The program begins in this file, which may include others. Its tab gets a key, and "
           "from "
           "then on it is compiled without this question. To choose again, use \"Reset File To "
           "Compile\" in the Compile menu, or press the right mouse button on another tab."),
        this);
    key->setObjectName("lblKey");
    key->setWordWrap(true);
    list_->setAccessibleDescription(key->text());
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(fromDisk_);
    buttons->addStretch();
    buttons->addWidget(ok_);
    buttons->addWidget(cancel_);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(list_, 1);
    layout->addWidget(key);
    layout->addLayout(buttons);
    resize(440, 320);
}

void CompileSelectDialog::TakeFromList() {
    const QList<QListWidgetItem*> selected = list_->selectedItems();
    if (selected.isEmpty()) return;
    chosenIndex_ = list_->row(selected.first());
    chosen_ = openFiles_[chosenIndex_];
    accept();
}

void CompileSelectDialog::SelectFromDisk() {
    const std::string folder = AsText(workbench_.settings.GetSetting(SettingNumber::SourceFolder));
    const std::optional<QString> path = workbench_.dialogs.ChooseFileToOpen(
        this, {"Select From Disk", QString::fromStdString(folder), {}, kSourceFilter, "txt"});
    if (!path) return;
    const QFileInfo file(*path);
    chosen_ = {file.fileName(), file.path()};
    chosenIndex_ = -1;
    accept();
}

}  // namespace zentro
