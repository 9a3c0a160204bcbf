#pragma once

#include <Qsci/qsciscintilla.h>
#include <vector>

#include "config/configuration.h"
#include "desktop/program_names.h"
#include "ui/editor/completion.h"

class QKeyEvent;

namespace zentro {

/// What the editor does for the user who types: indents, offers completions and shows what a
/// statement takes.
class TypingHelp {
  public:
    /// Both outlive the object.
    TypingHelp(QsciScintilla& editor, const InstructionConfiguration& configuration);

    void SetProgramNames(std::vector<ProgramName> names) { names_ = std::move(names); }
    const std::vector<ProgramName>& ProgramNames() const { return names_; }

    /// A key is about to be handled by the editor. True when nothing is left to do.
    bool HandleKey(const QKeyEvent& event);

    /// A character was typed.
    void CharacterAdded(int character);

    /// Offers what could stand at the caret.
    void ShowCompletions();

    /// The caret has moved without typing.
    void CaretMoved();

    bool IsOffering() const;

  private:
    bool SwallowBlank(const QKeyEvent& event);
    bool IsAtNewIndentation() const;
    static bool IsComplete(const Completion& completion, std::string_view before);
    bool IsOnlyOneOffered() const;
    void CloseWhenComplete();
    bool Offer(std::size_t leastTyped);
    bool IsOnScreen(long position) const;
    void IndentNewLine(int line);
    void IndentBlockWord(int line);
    int FindOpener(int line, bool isOutermost) const;
    void SetIndentation(int line, long columns);
    void UpdateCallTip();
    std::string BeforeCaret() const;

    QsciScintilla& editor_;
    const InstructionConfiguration& configuration_;
    std::vector<ProgramName> names_;
    bool hasChosen_ = false;  ///< the list of completions was asked for or walked through
    int tipLine_ = -1;        ///< the line whose statement is explained
    int indentedLine_ = -1;   ///< the line that was just indented, while its text has not begun
    long swallowed_ = 0;      ///< how many columns of its indentation were typed once more
};

}  // namespace zentro
