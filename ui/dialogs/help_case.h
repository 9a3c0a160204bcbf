#pragma once

#include <QLabel>

#include "ui/support/help_topic.h"

namespace zentro {

/// The box above a help page with the user's own line, what it lacks and how it is written.
class HelpCase : public QLabel {
    Q_OBJECT

  public:
    explicit HelpCase(QWidget* parent = nullptr);

    void Show(const OwnCase& ownCase);
    /// The box is hidden until there is another case.
    void Clear();

  protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void Colour();
    void KeepHeight();
};

}  // namespace zentro
