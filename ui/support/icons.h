#pragma once

#include <QIcon>
#include <QString>
#include <QWidget>

namespace zentro {

/// The program's icon of that name ("file-new"; the files lie in data/icons), drawn in the colours
/// of the present palette at any size. An unknown name gives an empty icon.
QIcon ThemedIcon(const QString& name);

/// The picture of an example program, by the name of its file without the extension.
QIcon ExampleIcon(const QString& name);

/// The program's own icon, in its own colours.
QIcon ProgramIcon();

/// The program's sign, as large as the widget.
class ProgramPicture : public QWidget {
    Q_OBJECT

  public:
    using QWidget::QWidget;

  protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace zentro
