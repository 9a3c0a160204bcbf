#pragma once

#include <QWidget>

class QLineEdit;
class QPlainTextEdit;

namespace zentro {

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
