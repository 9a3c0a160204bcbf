#pragma once

#include <QObject>
#include <vector>

#include "desktop/programs.h"
#include "ui/shell/name_commands.h"

namespace zentro {

class LiveCheck;
class SourceFiles;
class SourceWindow;

/// Writes what messages say is to be written. Each fix is of the text as it stands: the program is
/// checked before, and again afterwards, so that the marks of what is fixed go at once.
class FixCommands : public QObject {
    Q_OBJECT

  public:
    /// All of them outlive the object.
    FixCommands(Programs& programs, SourceFiles& files, LiveCheck& checks, NameCommands::Tell tell,
                QObject* parent);

    /// The caret's line of the file in front.
    void FixLine();
    /// All lines of the file in front with the mistake of the caret's line.
    void FixAllOfKind();
    /// A line, from 1.
    void FixLine(SourceWindow& source, int line);
    /// The same fix as a message told when the text may have been another.
    void FixAsTold(SourceWindow& source, const Fix& fix);

  private:
    using Messages = std::vector<LineMessage>;

    Messages MessagesNow(SourceWindow& source);
    void Apply(SourceWindow& source, const std::vector<Fix>& fixes);
    void TellNone(SourceWindow& source, const Messages& messages, int line);

    Programs& programs_;
    SourceFiles& files_;
    LiveCheck& checks_;
    NameCommands::Tell tell_;
};

}  // namespace zentro
