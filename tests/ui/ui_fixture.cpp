#include "tests/ui/ui_fixture.h"

#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QPrinter>
#include <filesystem>
#include <utility>

namespace zentro {

void ScriptedDialogs::ShowMessage(QWidget*, const QString& message) {
    shown += message;
}
void ScriptedDialogs::ShowCritical(QWidget*, const QString& message) {
    shown += message;
}

bool ScriptedDialogs::AskYesNo(QWidget*, const QString& question) {
    questions += question;
    return yes;
}

YesNoAnswer ScriptedDialogs::AskYesNoOrNeither(QWidget*, const QString& question) {
    questions += question;
    return yesNoAnswer;
}

SaveAnswer ScriptedDialogs::AskSaveChanges(QWidget*, const QStringList& files) {
    savesAsked += files;
    return saveAnswer;
}

std::optional<QString> ScriptedDialogs::AskText(QWidget*, const QString& question,
                                                const QString& answer) {
    questions += question;
    offered = answer;
    return std::exchange(text, std::nullopt);
}

std::optional<QString> ScriptedDialogs::ChooseFileToOpen(QWidget*, const FileChoice& choice) {
    lastChoice = choice;
    return fileToOpen;
}

std::optional<QString> ScriptedDialogs::ChooseFileToSave(QWidget*, const FileChoice& choice) {
    lastChoice = choice;
    return fileToSave;
}

std::optional<QString> ScriptedDialogs::ChooseFolder(QWidget*, const QString&, const QString&) {
    return folder;
}

std::optional<QColor> ScriptedDialogs::ChooseColour(QWidget*, const QColor&) {
    return colour;
}
std::optional<QFont> ScriptedDialogs::ChooseFont(QWidget*, const QFont&) {
    return font;
}

bool ScriptedDialogs::SetUpPrinter(QWidget*, QPrinter& printer) {
    if (printToFile.isEmpty()) return false;
    printer.setOutputFileName(printToFile);
    printer.setCopyCount(copies);
    return true;
}

void ScriptedDialogs::WaitFor(QWidget*, const QString& path, const std::function<bool()>& isDone) {
    waited += path;
    while (keepsWaiting && !isDone())
        QTest::qWait(1);
}

bool ScriptedDialogs::Run(QDialog& dialog) {
    return run && run(dialog);
}

UiTest::UiTest() {
    const std::filesystem::path folder = folder_.path().toStdString();
    std::filesystem::copy_file(ZENTRO_SHIPPED_CONFIG, folder / "ZentroCompiler.cfg");
    settings = std::make_unique<SettingsStore>(folder, folder, [](const std::string&) {});
    const std::string problem =
        LoadInstructionConfig((folder / "ZentroCompiler.cfg").string(), configuration);
    EXPECT_EQ(problem, "");
    workbench = std::make_unique<Workbench>(
        Workbench{*settings, configuration, dialogs, folder, folder / "data"});
}

UiTest::~UiTest() = default;

void UiTest::WriteFile(const QString& name, const QByteArray& bytes) {
    QFile file(FilePath(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(bytes), bytes.size());
}

QByteArray UiTest::ReadFile(const QString& name) {
    QFile file(FilePath(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    return file.readAll();
}

}  // namespace zentro

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    // Started by hand, the windows stay off the screen too.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
