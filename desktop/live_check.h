#pragma once

#include <QObject>
#include <QTimer>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "compiler/compile.h"
#include "config/configuration.h"
#include "desktop/line_message.h"
#include "desktop/program_names.h"

namespace zentro {

/// The text of an open file as it stands in its editor, UTF-8; nothing for a file that is not open.
using TextProvider = std::function<std::optional<std::string>(const std::string& path)>;

/// What a check of a program has found.
struct CheckResult {
    /// By the path of the file, folder and name joined.
    std::map<std::string, std::vector<LineMessage>> messages;
    std::vector<ProgramName> names;
    std::size_t lines = 0;  ///< of all files together
    bool succeeded = false;
};

/// Checks a program whose files may be open and changed. Nothing is written and nothing is asked.
CheckResult CheckProgram(const InstructionConfiguration& configuration, const ProgramFiles& program,
                         const TextProvider& openTexts);

/// Checks the program whenever the user rests from typing.
class LiveCheck : public QObject {
    Q_OBJECT

  public:
    /// The configuration outlives the object.
    LiveCheck(const InstructionConfiguration& configuration, TextProvider openTexts,
              QObject* parent = nullptr);

    /// Off: nothing is checked any more, and there are no messages.
    void SetLiveCheck(bool on);
    bool IsOn() const { return isOn_; }

    /// The program that is checked; one without a file name is none. Checks it soon.
    void SetProgram(const ProgramFiles& program);

    /// A text was changed: the check comes when no other change follows for a while.
    void TextChanged();

    /// Checks at once.
    void CheckNow();

    /// The messages of the last check against the lines of a file.
    std::vector<LineMessage> MessagesOf(const QString& folder, const QString& fileName) const;

    /// What the program declares. Names of parts that a broken line keeps from being read stay
    /// known until the program is in order again.
    const std::vector<ProgramName>& Names() const { return names_; }

  signals:
    /// A check is done: what was shown of the one before is out of date.
    void Checked();

  private:
    const InstructionConfiguration& configuration_;
    TextProvider openTexts_;
    ProgramFiles program_;
    CheckResult result_;
    std::vector<ProgramName> names_;
    QTimer rest_;
    bool isOn_ = true;
};

}  // namespace zentro
