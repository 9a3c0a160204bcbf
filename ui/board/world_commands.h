#pragma once

#include <QObject>
#include <functional>

#include "desktop/virtual_board_host.h"
#include "desktop/world_document.h"
#include "ui/support/workbench.h"

class QWidget;

namespace zentro {

/// What the user can do with the world on the floor as a whole.
class WorldCommands : public QObject {
    Q_OBJECT

  public:
    /// What the main window does for it.
    struct Surroundings {
        std::function<QString()> programFolder;  ///< where worlds are looked for and saved
        std::function<QString()> programName;    ///< of the file in front; empty: none
        /// Writes into the file in front which world it is for.
        std::function<void(const QString& world)> remember;
    };

    /// All of them outlive the object.
    WorldCommands(Workbench& workbench, VirtualBoardHost& host, WorldDocument& document,
                  Surroundings surroundings, QObject* parent);

    WorldDocument& Document() { return document_; }
    VirtualBoardHost& Host() { return host_; }

    /// Asks about unsaved changes first.
    void Open(QWidget* asking, const QString& path);
    void ChooseAndOpen(QWidget* asking);
    bool Save(QWidget* asking);
    bool SaveAs(QWidget* asking);
    /// Over as many sheets as it takes; the user is asked whether it may be so many.
    void PrintAtTrueScale(QWidget* asking);
    /// The world's start is where the robot is now.
    void StartHere(QWidget* asking);
    /// Puts a changed world on the floor. False: it cannot be, which the user has been told.
    bool Change(QWidget* asking, const world::World& world);

    /// Lays a picture from a file on the floor.
    void ChooseFloorPicture(QWidget* asking);
    void RemoveFloorPicture(QWidget* asking);

    /// The program in front that can remember the world; empty: there is none.
    QString Rememberer() const;
    /// Lets the program in front name the world, which is saved first.
    void Remember(QWidget* asking);

    /// Whether the world may be left: nothing is unsaved, or the user has decided about it.
    bool MayLeave(QWidget* asking);

  private:
    Workbench& workbench_;
    VirtualBoardHost& host_;
    WorldDocument& document_;
    Surroundings surroundings_;
};

}  // namespace zentro
