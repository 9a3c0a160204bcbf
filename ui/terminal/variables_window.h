#pragma once

#include <QTimer>
#include <QWidget>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "comms/variable_reader.h"
#include "ui/support/workbench.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace zentro {

class VariableList;

/// The values of the program's variables: read from the board while it is in debug mode, or looked
/// up all the time in a virtual board of this process.
class VariablesWindow : public QWidget {
    Q_OBJECT

  public:
    /// Looks up memory of a virtual board; empty when there is none at the moment.
    using LiveMemory = std::function<std::string(std::uint32_t address, std::size_t count)>;

    explicit VariablesWindow(Workbench& workbench, QWidget* parent = nullptr);

    /// The terminal to read through; null: none.
    void SetTerminal(TerminalSession* terminal);

    /// Tells at which of its instructions a virtual board is held; nothing while it runs.
    using HeldAt = std::function<std::optional<std::uint64_t>()>;

    /// Shows a virtual board's memory ten times a second instead of asking the terminal; an empty
    /// function ends that. Comes before LoadVariables, which would ask the terminal otherwise.
    /// While the board is held, what a step has changed stays marked until the next.
    void SetLiveMemory(LiveMemory memory, HeldAt heldAt = {});

    /// What the values are of, while they are live.
    void SetNote(const QString& note);

    /// Lists the variables of a program that was compiled anew, without reading them. Null: none.
    void ListVariables(const Compilation* compilation);

    /// Lists the variables and reads them. Tells the user when that cannot be done.
    void LoadVariables(std::vector<DebugVariable> variables);
    /// The same for those of a program; null: none was compiled.
    void LoadVariables(const Compilation* compilation);

    QSize sizeHint() const override { return {460, 380}; }

  signals:
    void FormClosing();

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    void MakeLayout();
    void List(std::vector<DebugVariable> variables);
    void Refresh();
    void LookUp();
    void BeginReading();
    void EndReading(bool complete);

    Workbench& workbench_;
    VariableReader reader_;
    LiveMemory liveMemory_;
    HeldAt heldAt_;
    std::optional<std::uint64_t> shownAt_;  ///< where the board was held at the last look
    QTimer liveTimer_;
    std::vector<DebugVariable> variables_;  ///< with the values that are shown
    VariableList* listVars_;
    QLineEdit* filter_;
    QCheckBox* compilersOwn_;
    QLabel* status_;
    QPushButton* cmdRefresh_;
    bool closed_ = false;
};

}  // namespace zentro
