#pragma once

#include <QComboBox>
#include <QTimer>

#include "desktop/outline.h"

namespace zentro {

class SourceEditor;

/// The routines, events, tables and the program of an editor's text, to jump to. It shows the one
/// in which the caret stands.
class OutlineBox : public QComboBox {
    Q_OBJECT

  public:
    /// Both outlive the box.
    OutlineBox(SourceEditor& editor, const CommandCatalogue& commands, QWidget* parent);

    void showPopup() override;
    void hidePopup() override;

  signals:
    /// A line (from 1) was chosen.
    void LineChosen(int line);

  protected:
    void wheelEvent(QWheelEvent* event) override;

  private:
    void ReadText();
    void FollowCaret();

    SourceEditor& editor_;
    const CommandCatalogue& commands_;
    std::vector<OutlineEntry> outline_;
    QTimer rest_;
};

}  // namespace zentro
