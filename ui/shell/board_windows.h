#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "desktop/board_state.h"
#include "desktop/programs.h"
#include "desktop/world_document.h"
#include "recording/recording_file.h"
#include "ui/support/workbench.h"

class QWidget;

namespace zentro {

class PlotWindow;
class SoundOutput;
class TerminalWindow;
class VariablesWindow;
class VirtualBoardWindow;
class WorldCommands;

/// The windows that have to do with a board: the terminal, the variables, the virtual board and the
/// plot, at most one of each kind. What they show, the board's state knows.
class BoardWindows : public QObject {
    Q_OBJECT

  public:
    /// What the main window does for it.
    struct Surroundings {
        std::function<void(QWidget*)> addChild;      ///< puts a window into the frame
        std::function<void(QWidget*)> bringToFront;  ///< a child window
        std::function<void(QWidget*)> uncover;       ///< the same without the focus
        std::function<QString()> objectFile;         ///< of the main file; empty: none is chosen
        std::function<bool()> objectWindowOpen;
        /// Writes into the program in front which world it is for.
        std::function<void(const QString& world)> rememberWorld;
    };

    /// All of them outlive the object.
    BoardWindows(Workbench& workbench, Programs& programs, BoardState& board,
                 Surroundings surroundings, QObject* parent);
    ~BoardWindows() override;

    /// Opens the terminal and its connection, or brings the terminal to the front.
    void OpenComms();
    /// Shows the virtual board and connects the terminal to it.
    void OpenVirtualBoard();
    /// True when the download has begun; otherwise the user has been told why not.
    bool DownloadCurrent();
    void DownloadSaved();
    /// Brings a program to the connected board, else to the virtual one, which opens, and starts
    /// it.
    void RunProgram(const std::shared_ptr<const CompiledProgram>& program);
    /// Brings a program to the virtual board, which opens, without starting it. False: it cannot be
    /// loaded.
    bool LoadProgram(const std::shared_ptr<const CompiledProgram>& program);
    /// Puts a run that was recorded on the virtual board, which opens, and its world on the floor.
    /// False: the user wants to keep the world that is there.
    bool ReplayRecording(const LoadedRecording& loaded, const QString& name,
                         const std::shared_ptr<const CompiledProgram>& compiled);
    /// Stops the program of the board and puts its outputs to rest.
    void Stop();
    void OpenVariables();
    void OpenPlot();
    /// Colours and fonts were changed.
    void ApplySettings();
    /// Whether nothing of the world on the floor would be lost, or the user has decided about it.
    bool MayClose();
    /// Lets the user choose a world for the floor.
    void ChooseWorld();
    const WorldDocument& World() const { return *world_; }
    /// Where files that belong to a program are looked for and saved: beside the one in front.
    QString ProgramFolder() const;

    /// Closes terminal and board windows in order.
    void CloseAll();

    /// Whose names the variables have: the program on the board, or where that is not known the one
    /// that was compiled last. Null: none.
    std::shared_ptr<const CompiledProgram> NamedProgram() const;

  signals:
    /// A program that goes to the board asks for a world that is not put on the floor.
    void WorldMissed(const QString& problem);
    void WorldEntered();

  private:
    /// What the variables window was told last.
    struct ShownVariables {
        std::shared_ptr<const CompiledProgram> program;
        const TerminalSession* session = nullptr;
        bool live = false;
        QString note;

        bool operator==(const ShownVariables&) const = default;
    };

    void MakeBoardWindow();
    void EnterWorldOf(const CompiledProgram& program);
    void MakeTerminal(const QString& portName);
    void CloseTerminal();
    void Follow();
    void ShowRun();
    void ShowVariables();
    void ShowPlottedProgram();
    bool MayRun();
    QString HeldName() const;
    QString VariablesNote() const;
    std::optional<std::uint64_t> HeldAt();
    void Send(const QString& path, bool runs);

    Workbench& workbench_;
    Programs& programs_;
    BoardState& board_;
    Surroundings surroundings_;
    WorldDocument* world_;
    WorldCommands* worldCommands_;
    SoundOutput* sound_;
    QPointer<TerminalWindow> terminal_;
    QPointer<VariablesWindow> variables_;
    QPointer<VirtualBoardWindow> boardWindow_;
    QPointer<PlotWindow> plot_;
    ShownVariables shown_;
    std::shared_ptr<const CompiledProgram> plotted_;       ///< whose variables the plot offers
    std::shared_ptr<const CompiledProgram> usedInputsOf_;  ///< which program's the window shows
    bool showsRun_ = false;  ///< once the program that is being sent runs
};

}  // namespace zentro
