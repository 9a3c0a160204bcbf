#include "ui/dialogs/calculator.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/dialogs/number_conversion.h"

namespace zentro {

Calculator::Calculator(QWidget* parent) : QWidget(parent), results_(new QPlainTextEdit) {
    setObjectName("frmCalc");
    setWindowTitle("Hex Calculator");
    results_->setObjectName("txtResult");
    results_->setAccessibleName("Results");
    results_->setReadOnly(true);
    results_->setTabChangesFocus(true);
    results_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    results_->setPlaceholderText("255 or FF or 0xFF or -1");
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(MakeInput());
    layout->addWidget(results_, 1);
    resize(380, 260);
}

QWidget* Calculator::MakeInput() {
    auto* row = new QWidget;
    number_ = new QLineEdit;
    number_->setObjectName("txtNumber");
    number_->setAccessibleName("Number to convert");
    auto* label = new QLabel("&Number");
    label->setBuddy(number_);
    auto* convert = new QPushButton("&Convert");
    convert->setObjectName("cmdConvert");
    convert->setAccessibleName("Convert");
    auto* clear = new QPushButton("C&lear");
    clear->setObjectName("cmdClear");
    clear->setAccessibleName("Clear the results");
    connect(convert, &QPushButton::clicked, this, &Calculator::Convert);
    connect(number_, &QLineEdit::returnPressed, this, &Calculator::Convert);
    connect(clear, &QPushButton::clicked, results_, &QPlainTextEdit::clear);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins({});
    layout->addWidget(label);
    layout->addWidget(number_, 1);
    layout->addWidget(convert);
    layout->addWidget(clear);
    return row;
}

void Calculator::Convert() {
    const bool first = results_->document()->isEmpty();
    const QString lines = ConvertNumber(number_->text()).join('\n');
    results_->appendPlainText(first ? lines : '\n' + lines);
    number_->setFocus();
    number_->selectAll();
}

}  // namespace zentro
