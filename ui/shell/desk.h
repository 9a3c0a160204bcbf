#pragma once

#include <QMdiArea>

namespace zentro {

/// The area of the child windows. While it is empty it says what one can do first.
class Desk : public QMdiArea {
    Q_OBJECT

  public:
    explicit Desk(QWidget* parent);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void TakeColours();
};

}  // namespace zentro
