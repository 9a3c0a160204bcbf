#pragma once

#include <QObject>
#include <QPointer>
#include <functional>
#include <vector>

#include "ui/shell/commands.h"

class QAction;
class QShortcut;
class QWidget;

namespace zentro {

class Programs;
class SourceFiles;

/// Enables each command while it is of use, as the table of commands says, and disables it
/// otherwise.
class CommandStates : public QObject {
    Q_OBJECT

  public:
    /// What the main window does for it.
    struct Surroundings {
        std::function<QAction*(CommandId)> action;
        std::function<QWidget*()> front;                  ///< the child window in front; null: none
        QWidget* window = nullptr;                        ///< of the keys
        std::function<bool(CommandNeed)> followsProgram;  ///< needs of following a program
    };

    /// The programs, their windows and the surroundings outlive the object.
    CommandStates(const Programs& programs, SourceFiles& files, Surroundings surroundings);
    ~CommandStates() override;

    /// Something changed of which it is not told by the programs, their windows, the focus or the
    /// clipboard.
    void Update();

  private:
    /// A key that tells why its command is disabled.
    struct TellingKey {
        CommandId id;
        QShortcut* key;
    };

    void AddTellingKey(const CommandRow& row);
    void FollowSelection(QWidget* focus);
    bool IsMet(CommandNeed need) const;
    bool HasTextToCopy() const;

    const Programs& programs_;
    SourceFiles& files_;
    Surroundings surroundings_;
    std::vector<TellingKey> tellingKeys_;
    QPointer<QWidget> focus_;  ///< whose selection is followed
    bool clipboardHasText_ = false;
};

}  // namespace zentro
