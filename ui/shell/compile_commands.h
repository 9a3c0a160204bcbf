#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>

#include "desktop/compile_service.h"
#include "desktop/programs.h"
#include "ui/output/compile_flow.h"
#include "ui/support/workbench.h"

class QWidget;

namespace zentro {

class CompilerOutputWindow;
class ObjectCodeWindow;
class SourceFiles;
class SourceWindow;

/// Compile and Syntax Check with their two windows, and the ways from a message or an address to
/// its source line.
class CompileCommands : public QObject {
    Q_OBJECT

  public:
    /// What the main window does for it.
    struct Surroundings {
        std::function<void(QWidget*)> addChild;
        std::function<void(QWidget*)> bringToFront;
        QWidget* dialogParent = nullptr;
    };

    CompileCommands(Workbench& workbench, Programs& programs, SourceFiles& files,
                    Surroundings surroundings, QObject* parent);
    ~CompileCommands() override;

    void CompileSource();
    void SyntaxCheck();

    /// Compiles a program as its texts stand in the editors, asks nothing and writes no file. After
    /// errors the caret is at the first, with what it says beside it. Null: another run is on.
    std::shared_ptr<const CompiledProgram> CompileTexts(OpenFile file);

    /// The same with nothing shown and the caret where it is. Null: it has errors, or another run
    /// is on.
    std::shared_ptr<const CompiledProgram> CompileQuietly(const OpenFile& file);

    /// The object file of the main file; empty when none is chosen.
    QString ObjectFile() const;
    CompilerOutputWindow* Output() const;
    ObjectCodeWindow* ObjectCode() const;

    /// Where the instruction at an address of the program comes from; nothing when that is not
    /// known.
    static std::optional<LineXref> PlaceOf(const CompiledProgram* program, std::uint16_t address);
    /// Selects the first message of the log about a line of an open file as it stands now.
    void SelectMessage(FileId id, int line);
    /// Selects an address of the program in its listing, when that is open.
    void SelectInListing(const CompiledProgram* program, std::uint16_t address);
    /// The same, and shows the source line.
    void ShowAddress(const CompiledProgram* program, std::uint16_t address);
    SourceWindow* ShowLine(const LineXref& line);

    /// Colours and fonts were changed.
    void ApplySettings();

  signals:
    /// A run is over. The file that it began with need not be the one in front.
    void Finished(zentro::FileId file, bool succeeded);
    /// What a message of the log told about the file in the window is to be fixed.
    void FixWanted(zentro::SourceWindow* source, const zentro::Fix& fix);

  private:
    class BoxPrompts;
    class FilesToCompile;

    void Run(CompileCommand command);
    void OpenWindows(bool withListing, const OpenFile& file);
    void FinishRun(const OpenFile& file, bool succeeded);
    void TellIfChanged();
    void FollowName();
    /// What becomes of a file with the first error that is not open.
    enum class ClosedFiles : std::uint8_t { Leave, Open };
    SourceWindow* GoBackToSource(ClosedFiles closed);
    SourceWindow* OpenWindowOf(const LineXref& line) const;

    Workbench& workbench_;
    Programs& programs_;
    SourceFiles& files_;
    Surroundings surroundings_;
    std::unique_ptr<BoxPrompts> prompts_;
    CompileService service_;
    QPointer<CompilerOutputWindow> output_;
    QPointer<ObjectCodeWindow> objectCode_;
    std::shared_ptr<const CompiledProgram> listed_;  ///< what the listing shows
    QString compiledRoot_;                           ///< last time, the key that it had
    Programs::ReadTexts compiledTexts_;
};

}  // namespace zentro
