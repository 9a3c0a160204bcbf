#pragma once

#include <QMenu>
#include <map>

#include "ui/board/world_commands.h"

namespace zentro {

/// The worlds that are shipped, with small pictures, and what can be done with the one on the
/// floor.
class WorldMenu : public QMenu {
    Q_OBJECT

  public:
    /// The commands outlive the menu.
    WorldMenu(WorldCommands& commands, QWidget* parent);

  private:
    void Fill();
    void AddShipped(const QString& path);
    void AddPens();

    WorldCommands& commands_;
    std::map<QString, QIcon> pictures_;  ///< by the path, as they were drawn
};

}  // namespace zentro
