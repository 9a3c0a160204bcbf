#pragma once

#include <QObject>
#include <functional>
#include <memory>

#include "desktop/board_state.h"
#include "desktop/programs.h"

class QShortcut;

namespace zentro {

class BoardWindows;
class CompileCommands;
class NoticeBar;

/// The ways of a program to the board: Run, Stop and the download of what was compiled. Where one
/// of them does something else than the user may think, or nothing, a notice says so and offers the
/// way out.
class SendCommands : public QObject {
    Q_OBJECT

  public:
    /// What the main window does for it.
    struct Surroundings {
        std::function<void()> openVirtualBoard;
        std::function<void(const QString&)> showStatus;
        std::function<void()> backToSource;  ///< gives the focus to the source in front
    };

    /// All of them outlive the object.
    SendCommands(Programs& programs, BoardState& board, CompileCommands& compiler,
                 BoardWindows& boards, NoticeBar& notices, Surroundings surroundings,
                 QObject* parent);

    /// Compiles the program of the file in front as it stands in the editor, brings it to the board
    /// and starts it. Asks nothing and saves nothing.
    void Run();
    /// Does the same but for the start, on the virtual board. False: nothing was loaded, which has
    /// been told.
    bool Load();
    /// Stops the program and puts every output to rest.
    void Stop();
    bool CanStop() const;

    /// Sends the program as it was compiled, and says when it has been changed since.
    void Download();
    /// The download command is off, and somebody pressed its key.
    void TellWhyNoDownload();
    /// A compile is over, which may be of another file than the one in front.
    void FollowCompile(FileId file, bool succeeded);

  private:
    std::shared_ptr<const CompiledProgram> CompileFront();
    void OfferFrontFile(FileId compiled);
    void OfferToSend(FileId compiled);
    void OfferToCompile(const OpenFile& file);
    void OfferToRun();
    void OfferVirtualBoard(const QString& text, std::function<bool()> holds);
    void TellOfOldObjectCode(const OpenFile& file, bool compiledBefore);
    void CompileAsMain(FileId file);
    bool TellOfLostLine();
    void FollowSending(const DownloadResult& result);
    void FollowRun();

    Programs& programs_;
    BoardState& board_;
    CompileCommands& compiler_;
    BoardWindows& boards_;
    NoticeBar& notices_;
    Surroundings surroundings_;
    QString sending_;  ///< the program that Run sends to a port; empty: none
    /// The program that Run has started; null: none, or its end was told.
    std::shared_ptr<const CompiledProgram> running_;
    bool isHeld_ = false;  ///< so it was told last
};

}  // namespace zentro
