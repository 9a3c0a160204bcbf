#include "ui/dialogs/find_dialog.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace zentro {

namespace {

QComboBox* MakeTextBox(const char* name, const QString& accessibleName) {
    auto* box = new QComboBox;
    box->setEditable(true);
    box->setInsertPolicy(QComboBox::NoInsert);
    box->setCompleter(nullptr);  // a completed text is not the one that was typed
    box->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    box->setMinimumContentsLength(28);
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setAccessibleName(accessibleName);
    box->lineEdit()->setObjectName(name);
    box->lineEdit()->setAccessibleName(accessibleName);
    return box;
}

QPushButton* MakeButton(const char* name, const QString& text) {
    auto* button = new QPushButton(text);
    button->setObjectName(name);
    button->setAccessibleName(text);
    button->setAutoDefault(false);
    return button;
}

void ShowHistory(QComboBox& box, const TextHistory& history) {
    const QSignalBlocker blocker(box);
    const QSignalBlocker editBlocker(box.lineEdit());
    const QString text = box.currentText();
    box.clear();
    box.addItems(history.Texts());
    box.setEditText(text);
}

}  // namespace

FindDialog::FindDialog(QWidget* parent) : QDialog(parent) {
    setObjectName("frmFind");
    setWindowTitle("Find and Replace");
    auto* left = new QVBoxLayout;
    left->addWidget(MakeTexts());
    left->addWidget(MakeOptions());
    left->addStretch();
    auto* layout = new QHBoxLayout(this);
    layout->addLayout(left, 1);
    layout->addWidget(MakeButtons());
    connect(this, &QDialog::finished, this, &FindDialog::FormClosing);
    TextChanged();
}

QWidget* FindDialog::MakeTexts() {
    auto* texts = new QWidget;
    toFind_ = MakeTextBox("TxtToFind", "Text to find");
    toReplace_ = MakeTextBox("txtToReplace", "Text to replace it with");
    toFind_->installEventFilter(this);  // it has the focus for its text box
    connect(toFind_, &QComboBox::editTextChanged, this, &FindDialog::TextChanged);
    auto* findLabel = new QLabel("Fi&nd what");
    findLabel->setBuddy(toFind_);
    auto* replaceLabel = new QLabel("Re&place with");
    replaceLabel->setBuddy(toReplace_);
    auto* grid = new QGridLayout(texts);
    grid->setContentsMargins({});
    grid->addWidget(findLabel, 0, 0);
    grid->addWidget(toFind_, 0, 1);
    grid->addWidget(replaceLabel, 1, 0);
    grid->addWidget(toReplace_, 1, 1);
    return texts;
}

QWidget* FindDialog::MakeOptions() {
    auto* options = new QWidget;
    matchCase_ = new QCheckBox("Match &case");
    matchCase_->setObjectName("CheckMatchCase");
    wholeWord_ = new QCheckBox("&Whole word");
    wholeWord_->setObjectName("CheckWholeWord");
    auto* front = new QRadioButton("Window in &front");
    front->setObjectName("OptionCurrentSource");
    front->setChecked(true);
    allFiles_ = new QRadioButton("All &open source files");
    allFiles_->setObjectName("OptionOpenSource");
    auto* grid = new QGridLayout(options);
    grid->setContentsMargins({});
    grid->addWidget(matchCase_, 0, 0);
    grid->addWidget(front, 0, 1);
    grid->addWidget(wholeWord_, 1, 0);
    grid->addWidget(allFiles_, 1, 1);
    for (QAbstractButton* button : options->findChildren<QAbstractButton*>()) {
        button->setAccessibleName(QString(button->text()).remove('&'));
    }
    return options;
}

QWidget* FindDialog::MakeButtons() {
    auto* buttons = new QWidget;
    find_ = MakeButton("BtnFind", "Find");
    find_->setDefault(true);
    replace_ = MakeButton("BtnReplace", "Replace");
    replaceAll_ = MakeButton("BtnReplaceAll", "Replace &All");
    auto* close = MakeButton("BtnClose", "Close");
    connect(find_, &QPushButton::clicked, this, &FindDialog::FindPressed);
    connect(replace_, &QPushButton::clicked, this, &FindDialog::ReplacePressed);
    connect(replaceAll_, &QPushButton::clicked, this, &FindDialog::ReplaceAllPressed);
    connect(close, &QPushButton::clicked, this, &FindDialog::reject);
    auto* layout = new QVBoxLayout(buttons);
    layout->setContentsMargins({});
    for (QPushButton* button : {find_, replace_, replaceAll_, close})
        layout->addWidget(button);
    layout->addStretch();
    return buttons;
}

QString FindDialog::TextToFind() const {
    return toFind_->currentText();
}

void FindDialog::SetTextToFind(const QString& text) {
    toFind_->setEditText(text);
}

void FindDialog::ShowFind() {
    show();
    raise();
    activateWindow();
    toFind_->setFocus();
    toFind_->lineEdit()->selectAll();
}

void FindDialog::ShowReplace() {
    ShowFind();
    if (TextToFind().isEmpty()) return;
    toReplace_->setFocus();
    toReplace_->lineEdit()->selectAll();
}

bool FindDialog::eventFilter(QObject* watched, QEvent* event) {
    // A click that gives the focus puts the caret somewhere right afterwards, so select after that.
    if (event->type() == QEvent::FocusIn)
        QMetaObject::invokeMethod(toFind_->lineEdit(), "selectAll", Qt::QueuedConnection);
    return QDialog::eventFilter(watched, event);
}

void FindDialog::TextChanged() {
    newSearch_ = true;
    find_->setText("Find");
    for (QPushButton* button : {find_, replace_, replaceAll_}) {
        button->setEnabled(!TextToFind().isEmpty());
    }
}

void FindDialog::BeginSearch(bool replaces) {
    QGuiApplication::clipboard()->clear();
    QGuiApplication::clipboard()->setText(TextToFind());
    found_.Add(TextToFind());
    ShowHistory(*toFind_, found_);
    if (!replaces) return;
    replaced_.Add(toReplace_->currentText());
    ShowHistory(*toReplace_, replaced_);
}

void FindDialog::FindPressed() {
    BeginSearch(false);
    const bool newSearch = newSearch_;
    newSearch_ = false;
    find_->setText("Find Next");
    emit FindText(TextToFind(), Options(), AllFiles(), newSearch);
}

void FindDialog::ReplacePressed() {
    BeginSearch(true);
    newSearch_ = false;
    find_->setText("Find Next");
    emit ReplaceText(TextToFind(), toReplace_->currentText(), Options(), AllFiles());
}

void FindDialog::ReplaceAllPressed() {
    BeginSearch(true);
    emit ReplaceAllText(TextToFind(), toReplace_->currentText(), Options(), AllFiles());
}

FindOptions FindDialog::Options() const {
    FindOptions options;
    options.setFlag(FindOption::MatchCase, matchCase_->isChecked());
    options.setFlag(FindOption::WholeWord, wholeWord_->isChecked());
    return options;
}

bool FindDialog::AllFiles() const {
    return allFiles_->isChecked();
}

}  // namespace zentro
