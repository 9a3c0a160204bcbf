#include "ui/shell/start_up.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDir>
#include <exception>
#include <iostream>
#include <memory>

#include "config/configuration.h"
#include "frontend/language_check.h"
#include "settings/settings_store.h"
#include "ui/dialogs/splash_window.h"
#include "ui/shell/last_moment.h"
#include "ui/shell/main_window.h"
#include "ui/shell/program_folders.h"
#include "ui/support/dialogs.h"
#include "ui/support/icons.h"
#include "ui/support/readable_style.h"
#include "ui/support/workbench.h"

namespace zentro {

namespace {

namespace fs = std::filesystem;

/// Everything that lives as long as the program.
struct Desktop {
    explicit Desktop(Dialogs& dialogs)
        : folders(FindProgramFolders(QCoreApplication::applicationDirPath().toStdString())),
          firstStart(!fs::exists(folders.settings / kSettingsFileName)),
          settings(folders.settings, folders.program,
                   [&dialogs](const std::string& message) {
                       dialogs.ShowMessage(nullptr, QString::fromStdString(message));
                   }),
          workbench{settings, configuration, dialogs, folders.program, folders.data} {}

    ProgramFolders folders;
    bool firstStart;
    SettingsStore settings;
    InstructionConfiguration configuration;
    Workbench workbench;
    std::unique_ptr<MainWindow> window;
};

struct StartUpTexts {
    Q_DECLARE_TR_FUNCTIONS(zentro::StartUp)
};

/// For somebody who has never seen the file.
constexpr auto kAboutLanguageFile = QT_TRANSLATE_NOOP(
    "zentro::StartUp",
    "This file holds the words in which programs are written and the texts of all messages. The "
    "program works on, but what is missing or wrong there cannot be used, and a program that needs "
    "it is not compiled as it is meant.\n\nA whole file comes with ZentroCompiler. Choose it in "
    "the "
    "options, page Advanced, as the Instructions Filename, and start the program again; or install "
    "ZentroCompiler again.");

void ShowIfAny(Dialogs& dialogs, const std::string& message) {
    if (!message.empty()) dialogs.ShowMessage(nullptr, QString::fromStdString(message));
}

void Load(Desktop& desktop) {
    ShowIfAny(desktop.workbench.dialogs, desktop.settings.LoadError());
    const bool lacksFolder =
        IsEmpty(desktop.settings.GetSetting(SettingNumber::SourceFolder)) || desktop.firstStart;
    ShowIfAny(desktop.workbench.dialogs, desktop.settings.Heal(desktop.folders.program));
    if (lacksFolder) UseDocumentsFolder(desktop.settings, desktop.folders);
    FollowMovedProgram(desktop.settings, desktop.folders);
    const std::string file = AsText(desktop.settings.GetSetting(SettingNumber::InstructionFile));
    LoadLanguage(file, desktop.configuration, desktop.workbench.dialogs);
}

void OpenMainWindow(Desktop& desktop, QWidget* splash) {
    desktop.window = std::make_unique<MainWindow>(desktop.workbench);
    desktop.window->show();
    desktop.window->activateWindow();
    if (splash != nullptr) splash->raise();
    desktop.window->Begin(desktop.firstStart);
}

int Run(Dialogs& dialogs) {
    Desktop desktop(dialogs);
    // Between the splash window and the main window none may be open for a moment.
    QApplication::setQuitOnLastWindowClosed(false);
    QPointer<SplashWindow> splash = new SplashWindow;
    const auto open = [&desktop, splash] {
        OpenMainWindow(desktop, splash);
        QApplication::setQuitOnLastWindowClosed(true);
    };
    // What loading has to tell may be read for longer than the splash window stays.
    bool isLoaded = false;
    bool isWanted = false;
    QObject::connect(splash, &SplashWindow::ShowMainWindow, qApp, [&] {
        isWanted = true;
        if (isLoaded) open();
    });
    splash->show();
    Load(desktop);
    isLoaded = true;
    const LastMoment lastMoment([&desktop](Ending ending) {
        if (desktop.window == nullptr) return;
        const QString problem = desktop.window->KeepUnsaved(ending);
        if (!problem.isEmpty()) std::cerr << problem.toStdString() << '\n';
    });
    if (isWanted) open();
    const int status = QApplication::exec();
    desktop.window.reset();
    return status;
}

}  // namespace

void LoadLanguage(const std::string& file, InstructionConfiguration& configuration,
                  Dialogs& dialogs) {
    const std::string problem = LoadInstructionConfig(file, configuration);
    ShowIfAny(dialogs, problem);
    if (!problem.empty()) return;
    // What is there is used; what is missing or wrong would else be noticed only when it is needed.
    const std::string findings = TellFindings(CheckLanguage(configuration));
    if (findings.empty()) return;
    dialogs.ShowMessage(nullptr, QString::fromStdString(file + ": " + findings) + "\n\n" +
                                     StartUpTexts::tr(kAboutLanguageFile));
}

int RunTellingFailures(Dialogs& dialogs, const std::function<int()>& program) {
    try {
        return program();
    } catch (const std::exception& failure) {
        dialogs.ShowCritical(nullptr, QString("Internal Error has ocurred:\n\n") + failure.what());
        return 1;
    }
}

int RunDesktop(const QStringList& arguments, Dialogs& dialogs) {
    QApplication::setWindowIcon(ProgramIcon());
    QApplication::setStyle(new ReadableStyle);
    if (arguments.size() > 1) {
        dialogs.ShowMessage(nullptr,
                            "App started with command line args, but this feature is not "
                            "implemented yet");
        return 1;
    }
    return RunTellingFailures(dialogs, [&dialogs] { return Run(dialogs); });
}

}  // namespace zentro
