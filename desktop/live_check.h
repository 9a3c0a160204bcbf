#pragma once

#include <QObject>
#include <QTimer>
#include <map>
#include <optional>

#include "config/configuration.h"
#include "desktop/programs.h"
#include "settings/settings_store.h"

namespace zentro {

/// Checks the program of a file whose texts may be open and changed. Nothing is written and nothing
/// is asked.
ProgramReport CheckProgram(const InstructionConfiguration& configuration, const OpenFile& file,
                           const SettingsStore& settings, const Programs& programs);

/// Checks the program of the file in front whenever the user rests from typing, and at once when
/// another file comes to the front.
class LiveCheck : public QObject {
    Q_OBJECT

  public:
    /// All of them outlive the object. Whether the check is on is a setting.
    LiveCheck(const InstructionConfiguration& configuration, SettingsStore& settings,
              Programs& programs, QObject* parent = nullptr);

    /// Switches the checks on or off, now and for the next start. Off: there are no marks.
    void SetLiveCheck(bool on);
    bool IsOn() const { return isOn_; }
    /// The settings were changed.
    void ReadSetting();

    /// Checks at once.
    void CheckNow();
    /// The same for a command that needs to know the program of the file in front, whether or not
    /// the checks are on.
    void CheckForCommand();

  private:
    void Follow();
    void LearnIncludes(const OpenFile& file);
    void Check(const OpenFile& root);
    void CheckLateFiles();

    const InstructionConfiguration& configuration_;
    SettingsStore& settings_;
    Programs& programs_;
    const QString includeWords_;        ///< only a text with them can include another
    std::optional<FileId> front_;       ///< when it was looked at last
    std::map<FileId, Revision> texts_;  ///< the same
    QTimer rest_;
    int lateChecks_ = 0;  ///< since the texts were edited last
    bool isOn_ = false;
};

}  // namespace zentro
