#include "ui/dialogs/rename_dialog.h"

#include <QAccessible>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/support/colours.h"

namespace zentro {

namespace {

const QColor kProblemColour(200, 0, 0);
constexpr int kProblemLines = 4;
constexpr int kProblemWidth = 72;  // characters

}  // namespace

RenameDialog::RenameDialog(const QString& name, const QString& places, Check check, QWidget* parent)
    : QDialog(parent),
      name_(name),
      check_(std::move(check)),
      newName_(new QLineEdit(name, this)),
      problem_(new QLabel(this)) {
    setObjectName("frmRename");
    setWindowTitle(tr("Rename %1").arg(name));
    newName_->setObjectName("txtNewName");
    SetUpProblem();
    BuildLayout(places);
    connect(newName_, &QLineEdit::textChanged, this, &RenameDialog::Look);
    newName_->selectAll();
    newName_->setFocus();
    Look();
}

void RenameDialog::SetUpProblem() {
    problem_->setObjectName("lblProblem");
    problem_->setWordWrap(true);
    problem_->setTextFormat(Qt::PlainText);
    problem_->setAlignment(Qt::AlignTop | Qt::AlignLeading);
    QPalette palette = problem_->palette();
    palette.setColor(QPalette::WindowText,
                     ReadableOn(kProblemColour, palette.color(QPalette::Window)));
    problem_->setPalette(palette);
    // Room for a sentence, so that the window does not jump while one types.
    problem_->setMinimumSize(fontMetrics().averageCharWidth() * kProblemWidth,
                             fontMetrics().lineSpacing() * kProblemLines);
}

void RenameDialog::BuildLayout(const QString& places) {
    auto* rows = new QVBoxLayout(this);
    auto* told = new QLabel(places, this);
    told->setObjectName("lblPlaces");
    told->setWordWrap(true);
    auto* label = new QLabel(tr("New &name:"), this);
    label->setBuddy(newName_);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    ok_ = buttons->button(QDialogButtonBox::Ok);
    ok_->setObjectName("OKButton");
    ok_->setText(tr("&Rename"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName("CancelButton");
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    rows->addWidget(told);
    rows->addWidget(label);
    rows->addWidget(newName_);
    rows->addWidget(problem_);
    rows->addWidget(buttons);
}

QString RenameDialog::NewName() const {
    return newName_->text().trimmed();
}

void RenameDialog::Look() {
    const bool isNew = NewName() != name_;
    const QString problem = isNew ? check_(NewName()) : QString();
    ok_->setEnabled(isNew && problem.isEmpty());
    if (problem == problem_->text()) return;
    problem_->setText(problem);
    layout()->activate();
    resize(width(), std::max(height(), layout()->totalHeightForWidth(width())));
    QAccessibleEvent changed(problem_, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&changed);
}

}  // namespace zentro
