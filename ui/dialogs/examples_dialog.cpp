#include "ui/dialogs/examples_dialog.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <utility>

#include "desktop/text_file.h"
#include "ui/support/icons.h"

namespace zentro {

namespace {

enum Column : std::uint8_t { NameColumn, SentenceColumn };

constexpr QSize kPictureSize{40, 40};

}  // namespace

ExamplesDialog::ExamplesDialog(std::vector<ExampleProgram> examples, QWidget* parent)
    : QDialog(parent), examples_(std::move(examples)), list_(new QTreeWidget(this)) {
    setObjectName("frmExamples");
    setWindowTitle(tr("Example Programs"));
    auto* const label = new QLabel(tr("&Programs to look at, to run and to change:"), this);
    label->setBuddy(list_);
    list_->setObjectName("ExampleList");
    list_->setAccessibleName(tr("Example programs"));
    list_->setRootIsDecorated(false);
    list_->setHeaderHidden(true);
    list_->setColumnCount(2);
    list_->setIconSize(kPictureSize);
    list_->setWordWrap(true);
    list_->setAllColumnsShowFocus(true);
    list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    FillList();
    connect(list_, &QTreeWidget::itemActivated, this, &ExamplesDialog::TakeFromList);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(list_, 1);
    layout->addWidget(MakeButtons());
    resize(640, 560);
    list_->setFocus();
}

void ExamplesDialog::FillList() {
    QFont bold = list_->font();
    bold.setBold(true);
    for (const ExampleProgram& example : examples_) {
        const LoadedText source = LoadText(example.path);
        auto* const item = new QTreeWidgetItem(list_);
        item->setIcon(NameColumn, ExampleIcon(example.name));
        item->setText(NameColumn, example.title);
        item->setFont(NameColumn, bold);
        item->setText(SentenceColumn, FirstSentence(QString::fromStdString(source.file.text)));
    }
    list_->header()->setSectionResizeMode(NameColumn, QHeaderView::ResizeToContents);
    list_->setCurrentItem(list_->topLevelItem(0));
}

QDialogButtonBox* ExamplesDialog::MakeButtons() {
    auto* const buttons = new QDialogButtonBox(this);
    QPushButton* const open = buttons->addButton(tr("&Open"), QDialogButtonBox::AcceptRole);
    QPushButton* const other =
        buttons->addButton(tr("&Select From Disk …"), QDialogButtonBox::ActionRole);
    QPushButton* const cancel = buttons->addButton(QDialogButtonBox::Cancel);
    open->setObjectName("OKButton");
    other->setObjectName("BtnSelectFromDisk");
    cancel->setObjectName("CancelButton");
    open->setDefault(true);
    open->setEnabled(!examples_.empty());
    connect(open, &QPushButton::clicked, this, &ExamplesDialog::TakeFromList);
    connect(other, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    return buttons;
}

void ExamplesDialog::TakeFromList() {
    const int index = list_->indexOfTopLevelItem(list_->currentItem());
    if (index < 0) return;
    chosen_ = examples_[static_cast<std::size_t>(index)].path;
    accept();
}

}  // namespace zentro
