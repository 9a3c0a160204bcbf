#pragma once

#include <QString>
#include <QStringList>
#include <QWidget>

class QLineEdit;
class QPlainTextEdit;

namespace zentro {

/// What the calculator writes for a number: "Converting: " and the number, then what it is in the
/// other base. Digits alone can be decimal or hexadecimal and are converted both ways; with a
/// letter A to F or with "0x" in front the number is hexadecimal, with a sign decimal. A number
/// holds 32 bits: -2147483648 to 4294967295; one below 0 is given as its two's complement.
QStringList ConvertNumber(const QString& number);

/// Converts numbers between decimal and hexadecimal, and keeps what it wrote until it is cleared.
class Calculator : public QWidget {
    Q_OBJECT

  public:
    explicit Calculator(QWidget* parent = nullptr);

  private:
    void Convert();
    QWidget* MakeInput();

    QLineEdit* number_ = nullptr;
    QPlainTextEdit* results_;
};

}  // namespace zentro
