#pragma once

#include <QWidget>

namespace zentro {

/// The program's sign, as large as the widget.
class ProgramPicture : public QWidget {
    Q_OBJECT

  public:
    using QWidget::QWidget;

  protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace zentro
