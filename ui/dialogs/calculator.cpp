#include "ui/dialogs/calculator.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QVBoxLayout>
#include <algorithm>
#include <cstdint>
#include <limits>

#include "ui/support/source_font.h"

namespace zentro {

namespace {

constexpr auto kTooBig = " Number too Big for Hex";
constexpr auto kCannotConvert = "Sorry - can't convert";

bool IsWhole(const QString& text, const char* pattern) {
    return QRegularExpression(QRegularExpression::anchoredPattern(pattern)).match(text).hasMatch();
}

bool IsZero(const QString& digits) {
    return std::ranges::all_of(digits, [](QChar digit) { return digit == '0'; });
}

QString DecimalToHex(const QString& number) {
    bool fits = false;
    const qint64 value = number.toLongLong(&fits);
    fits = fits && value >= std::numeric_limits<std::int32_t>::min() &&
           value <= std::numeric_limits<std::uint32_t>::max();
    if (!fits) return number + kTooBig;
    return QString::number(static_cast<std::uint32_t>(value), 16).toUpper();
}

QString HexToDecimal(const QString& digits) {
    bool fits = false;
    const std::uint32_t value = digits.toUInt(&fits, 16);
    return fits ? QString::number(value) : QString(kCannotConvert);
}

}  // namespace

Calculator::Calculator(QWidget* parent) : QWidget(parent), results_(new QPlainTextEdit) {
    setObjectName("frmCalc");
    setWindowTitle("Hex Calculator");
    results_->setObjectName("txtResult");
    results_->setAccessibleName("Results");
    results_->setReadOnly(true);
    results_->setTabChangesFocus(true);
    results_->setFont(FixedFont());
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

QStringList ConvertNumber(const QString& number) {
    const QString text = number.trimmed();
    const QString hexDigits = text.startsWith("0x", Qt::CaseInsensitive) ? text.mid(2) : text;
    const bool decimal = IsWhole(text, "[+-]?[0-9]+");
    const bool hexadecimal = IsWhole(hexDigits, "[0-9A-Fa-f]+");

    QStringList lines{"Converting: " + text};
    if (!decimal && !hexadecimal) return lines << kCannotConvert;
    if (IsZero(decimal ? QString(text).remove('+').remove('-') : hexDigits))
        return lines << "Zero is Zero in all bases";
    if (decimal) lines << "Dec to Hex: " + DecimalToHex(text);
    if (hexadecimal) lines << "Hex to Dec: " + HexToDecimal(hexDigits);
    return lines;
}

}  // namespace zentro
