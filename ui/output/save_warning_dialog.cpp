#include "ui/output/save_warning_dialog.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace zentro {

SaveWarningDialog::SaveWarningDialog(const QString& fileName, bool isOnDisk, QWidget* parent)
    : QDialog(parent), dontShow_(new QCheckBox("Dont Show this warning again", this)) {
    setObjectName("frmSaveWarning");
    setWindowTitle("Warning!");
    dontShow_->setObjectName("chkDontShow");
    auto* const icon = new QLabel(this);
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(32, 32));
    const QString explanation =
        isOnDisk ? tr("'%1' has changes that are not saved yet.\n\nOK saves it and compiles "
                      "it.\nCancel compiles it as it was last saved.\nEscape stops here.")
                 : tr("'%1' was never saved.\n\nOK asks for its name, saves it and compiles "
                      "it.\nCancel or Escape stops here: there is nothing to compile yet.");
    auto* const text = new QLabel(explanation.arg(fileName), this);
    text->setTextFormat(Qt::PlainText);
    auto* const ok = new QPushButton("OK", this);
    ok->setObjectName("OKButton");
    ok->setDefault(true);
    auto* const cancel = new QPushButton("Cancel", this);
    cancel->setObjectName("CancelButton");
    connect(ok, &QPushButton::clicked, this, [this] { TakeAnswer(SaveWarningAnswer::Save); });
    connect(cancel, &QPushButton::clicked, this,
            [this] { TakeAnswer(SaveWarningAnswer::CompileAsSaved); });

    auto* const message = new QHBoxLayout;
    message->setSpacing(12);
    message->addWidget(icon, 0, Qt::AlignTop);
    message->addWidget(text, 1);
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(dontShow_, 1);
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    auto* const layout = new QVBoxLayout(this);
    layout->setSpacing(16);
    layout->addLayout(message);
    layout->addLayout(buttons);
    setTabOrder(ok, cancel);
    setTabOrder(cancel, dontShow_);
    ok->setFocus();
}

void SaveWarningDialog::TakeAnswer(SaveWarningAnswer answer) {
    answer_ = answer;
    done(answer == SaveWarningAnswer::Save ? Accepted : Rejected);
}

bool SaveWarningDialog::DontShowAgain() const {
    return dontShow_->isChecked();
}

}  // namespace zentro
