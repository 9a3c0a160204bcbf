#pragma once

#include <QTimer>
#include <QWidget>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "comms/variable_reader.h"
#include "ui/support/workbench.h"

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

    /// Shows a virtual board's memory ten times a second instead of asking the terminal; an empty
    /// function ends that. Comes before LoadVariables, which would ask the terminal otherwise.
    void SetLiveMemory(LiveMemory memory);

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
    QTimer liveTimer_;
    std::vector<DebugVariable> variables_;  ///< with the values that are shown
    VariableList* listVars_;
    QLineEdit* filter_;
    QLabel* status_;
    QPushButton* cmdRefresh_;
    bool closed_ = false;
};

}  // namespace zentro
