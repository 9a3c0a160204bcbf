#pragma once

#include <QWidget>

#include "desktop/virtual_board_host.h"

class QHBoxLayout;
class QToolButton;

namespace zentro {

class FloorWidget;

/// The floor with what can be done to it.
class FloorPanel : public QWidget {
    Q_OBJECT

  public:
    /// The host outlives the panel.
    FloorPanel(VirtualBoardHost& host, QWidget* parent);

    void Refresh();

  private:
    QToolButton* AddButton(const QString& name, const QString& text, const QString& toolTip);

    VirtualBoardHost& host_;
    FloorWidget* floor_;
    QHBoxLayout* bar_;
};

}  // namespace zentro
