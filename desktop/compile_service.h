#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <map>
#include <memory>

#include "compiler/compile.h"
#include "desktop/programs.h"
#include "settings/settings_store.h"

namespace zentro {

/// A program as it was compiled. It stays whole as long as somebody works with it: a board may hold
/// it when others have long been compiled.
struct CompiledProgram {
    /// What a compilation works with to its end.
    struct Outside;

    CompiledProgram();
    ~CompiledProgram();

    QString root;                       ///< key of the file that it begins with
    QString name;                       ///< of that file
    QString objectFile;                 ///< path
    std::map<QString, Revision> texts;  ///< what it was compiled from, by the key of the file
    std::string objectText;             ///< the content of the object file; empty: none was written
    bool succeeded = false;             ///< every stage did, and no error was counted
    std::unique_ptr<Outside> outside;
    std::unique_ptr<Compilation> compilation;  ///< refers to `outside`
};

/// Runs the compiler and tells the programs what it found. Windows stay alive meanwhile but take no
/// input.
class CompileService : public QObject {
    Q_OBJECT

  public:
    /// All of them outlive the service.
    CompileService(const InstructionConfiguration& configuration, const SettingsStore& settings,
                   Programs& programs, Prompts& prompts, QObject* parent = nullptr);

    /// Compiles the program that begins with an open file, from the files as they are saved. The
    /// listing is filled when the settings want one. Returns what came of it; null when nothing was
    /// compiled, which has been told: another run is on, or the object file would replace the
    /// source file. The sinks are used during the call only.
    std::shared_ptr<const CompiledProgram> Compile(const OpenFile& file, OutputSink& output,
                                                   ListingSink* listing);
    /// The same from the texts as they stand in their editors, saved or not. Nothing is asked and
    /// no file is written: the object code is in what is returned. Null: another run is on.
    std::shared_ptr<const CompiledProgram> CompileTexts(const OpenFile& file, OutputSink& output,
                                                        ListingSink* listing);
    /// Reads and parses a program; only its messages are kept. True when it has no errors.
    bool Check(const OpenFile& file, OutputSink& output);

    bool IsRunning() const { return isRunning_; }

  private:
    /// Where a run reads its texts.
    enum class Texts { Saved, InEditors };

    using RunStages = std::function<bool(Compilation&, CompiledProgram& made)>;

    std::shared_ptr<CompiledProgram> Run(const OpenFile& file, Texts texts, OutputSink& output,
                                         const RunStages& runStages);
    ProgramReport WithAllMistakes(ProgramReport report, const OpenFile& file) const;
    std::map<QString, Revision> RevisionsOf(Texts texts) const;
    ListingSink* Wanted(ListingSink* listing) const;

    const InstructionConfiguration& configuration_;
    const SettingsStore& settings_;
    Programs& programs_;
    Prompts& prompts_;
    bool isRunning_ = false;
};

}  // namespace zentro
