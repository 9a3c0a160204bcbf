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
    auto* label = new QLabel(tr("New &name:"), this);
    label->setBuddy(newName_);
    auto* told = new QLabel(places, this);
    told->setObjectName("lblPlaces");
    told->setWordWrap(true);
    problem_->setObjectName("lblProblem");
    problem_->setWordWrap(true);
    problem_->setTextFormat(Qt::PlainText);
    problem_->setAlignment(Qt::AlignTop | Qt::AlignLeading);
    QPalette palette = problem_->palette();
    palette.setColor(QPalette::WindowText,
                     ReadableOn(kProblemColour, palette.color(QPalette::Window)));
    problem_->setPalette(palette);
    // Room for a sentence, so that the window does not jump while one types.
    problem_->setMinimumSize(fontMetrics().averageCharWidth() * 72,
                             fontMetrics().lineSpacing() * kProblemLines);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    ok_ = buttons->button(QDialogButtonBox::Ok);
    ok_->setObjectName("OKButton");
    ok_->setText(tr("&Rename"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName("CancelButton");
    auto* layout = new QVBoxLayout(this);
    for (QWidget* part : {static_cast<QWidget*>(told), static_cast<QWidget*>(label),
                          static_cast<QWidget*>(newName_), static_cast<QWidget*>(problem_),
                          static_cast<QWidget*>(buttons)}) {
        layout->addWidget(part);
    }
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(newName_, &QLineEdit::textChanged, this, &RenameDialog::Look);
    newName_->selectAll();
    newName_->setFocus();
    Look();
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
