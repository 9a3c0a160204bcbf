#pragma once

#include <memory>

#include "comms/port_list.h"
#include "tests/ui/ui_fixture.h"
#include "ui/shell/main_window.h"

class QMdiSubWindow;
class QPlainTextEdit;

namespace zentro {

class SourceWindow;

/// The whole program on a screen that is not there, with a folder of its own.
class MainWindowTest : public UiTest {
  protected:
    MainWindowTest();
    ~MainWindowTest() override;

    /// Ends the program as if it had been killed, and starts it again in the same folder.
    void KillAndRestart();
    void Start();

    /// Triggers a command with its shortcut, or through its menu entry when it has none.
    void Press(CommandId id);
    /// Types into the source window in front.
    void Type(const QString& text);
    /// A new source window with the text, saved under the name.
    SourceWindow* Write(const QString& name, const QString& text);
    SourceWindow* FrontSource() const;
    /// Makes the file of a tab, from 0, the one to compile.
    void ChooseMain(std::size_t tab);

    /// The child window with this object name; null when it is not open.
    template <typename Widget = QWidget>
    Widget* Child(const char* name) const {
        return window->findChild<Widget*>(name);
    }
    void Click(const char* buttonName);
    /// What a message box said last.
    QString LastShown() const { return dialogs.shown.isEmpty() ? QString() : dialogs.shown.last(); }

    std::vector<PortDescription> ports;
    std::unique_ptr<MainWindow> window;
};

}  // namespace zentro
