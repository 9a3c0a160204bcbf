#pragma once

#include <QObject>
#include <QString>
#include <functional>

#include "desktop/virtual_board_host.h"
#include "ui/support/workbench.h"

class QWidget;

namespace zentro {

/// Keeps runs of the virtual board in files.
class RecordingCommands : public QObject {
    Q_OBJECT

  public:
    /// What the main window does for it.
    struct Surroundings {
        QWidget* window;                         ///< over which boxes stand
        std::function<QString()> programFolder;  ///< where recordings are kept at first
        std::function<QString()> programName;    ///< of the program on the board; empty: none
        std::function<void(const QString&)> showStatus;
    };

    /// All of them outlive the object.
    RecordingCommands(Workbench& workbench, VirtualBoardHost& host, Surroundings surroundings,
                      QObject* parent);

    /// The run up to the moment in which it was asked for.
    void Save();

  private:
    Workbench& workbench_;
    VirtualBoardHost& host_;
    Surroundings surroundings_;
};

}  // namespace zentro
