#include "tests/ui/shell/main_window_fixture.h"

#include <QAbstractButton>
#include <QAction>
#include <QDialog>
#include <QTreeWidget>

#include "ui/dialogs/recovery_dialog.h"
#include "ui/editor/source_editor.h"
#include "ui/editor/source_window.h"
#include "ui/shell/recovery_keeper.h"
#include "ui/shell/source_files.h"

namespace zentro {

MainWindowTest::MainWindowTest() {
    // What the first compile asks: the file that is listed first, and whether it may be saved.
    dialogs.run = [](QDialog& dialog) {
        if (auto* list = dialog.findChild<QWidget*>("FileList")) {
            list->setFocus();
            QTest::keyClick(list, Qt::Key_Home);
            QTest::keyClick(list, Qt::Key_Space);
        }
        if (qobject_cast<RecoveryDialog*>(&dialog) != nullptr) {
            auto* list = dialog.findChild<QTreeWidget*>();
            list->selectAll();
            dialog.findChild<QAbstractButton*>("BtnRecover")->click();
            return true;
        }
        auto* ok = dialog.findChild<QAbstractButton*>("OKButton");
        if (ok == nullptr || !ok->isEnabled()) return false;
        ok->click();
        return dialog.result() == QDialog::Accepted;
    };
    const std::string folder = folder_.path().toStdString() + "/";
    settings->SaveSetting(SettingNumber::SourceFolder, folder);
    settings->SaveSetting(SettingNumber::ObjectFolder, folder);
    Start();
}

MainWindowTest::~MainWindowTest() {
    dialogs.saveAnswer = SaveAnswer::Discard;
    if (window != nullptr) window->close();
}

void MainWindowTest::Start() {
    window = std::make_unique<MainWindow>(*workbench, [this] { return ports; });
    window->show();
    window->Begin(false);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    window->activateWindow();
}

void MainWindowTest::KillAndRestart() {
    // Ten seconds of typing have passed; then nothing of an orderly end happens.
    EXPECT_EQ(window->findChild<RecoveryKeeper*>()->KeepNow(), "");
    window.reset();
    Start();
}

void MainWindowTest::Press(CommandId id) {
    const QAction* action = window->Action(id);
    // Nobody is as quick as two commands at once.
    ASSERT_TRUE(QTest::qWaitFor([action] { return action->isEnabled(); }, 1000))
        << action->objectName().toStdString();
    if (action->shortcut().isEmpty()) {
        window->Action(id)->trigger();
        return;
    }
    const QKeyCombination keys = action->shortcut()[0];
    QWidget* focus = QApplication::focusWidget();
    const bool isHere = focus != nullptr && focus->window() == window.get();
    QTest::keyClick(isHere ? focus : window.get(), keys.key(), keys.keyboardModifiers());
}

SourceWindow* MainWindowTest::FrontSource() const {
    return window->Files().Front();
}

void MainWindowTest::ChooseMain(std::size_t tab) {
    window->OpenPrograms().SetMain(window->OpenPrograms().Files().at(tab).id);
}

void MainWindowTest::Type(const QString& text) {
    ASSERT_NE(FrontSource(), nullptr);
    SourceEditor* editor = FrontSource()->Editor();
    editor->setFocus();
    for (const QChar& character : text) {
        if (character == '\n') {
            QTest::keyClick(editor, Qt::Key_Return);
        } else {
            QTest::keyClicks(editor, character);
        }
    }
}

SourceWindow* MainWindowTest::Write(const QString& name, const QString& text) {
    Press(CommandId::NewSource);
    SourceWindow* source = FrontSource();
    source->SetText(text);
    dialogs.fileToSave = FilePath(name);
    Press(CommandId::SaveSourceAs);
    EXPECT_EQ(source->FileName(), name);
    return source;
}

void MainWindowTest::Click(const char* buttonName) {
    auto* button = Child<QAbstractButton>(buttonName);
    ASSERT_NE(button, nullptr) << buttonName;
    QTest::mouseClick(button, Qt::LeftButton);
}

}  // namespace zentro
