#include <QAbstractButton>
#include <QAction>
#include <QCheckBox>
#include <QClipboard>
#include <QDir>
#include <QLineEdit>
#include <QListWidget>
#include <QTabBar>
#include <QTimer>
#include <functional>

#include "tests/ui/ui_fixture.h"
#include "ui/editor/source_window.h"
#include "ui/shell/compile_commands.h"
#include "ui/shell/main_window.h"
#include "ui/shell/recovery_keeper.h"
#include "ui/shell/source_files.h"

namespace zentro {
namespace {

/// How a user leaves a box without an answer.
enum class Leave : std::uint8_t { Escape, CloseButton, Return };

/// The desktop's own dialogs. A log file can be named beforehand, since only then comes the
/// question whether to create it.
class OwnDialogs : public DesktopDialogs {
  public:
    std::optional<QString> ChooseFileToSave(QWidget* parent, const FileChoice& choice) override {
        return fileToSave ? fileToSave : DesktopDialogs::ChooseFileToSave(parent, choice);
    }
    std::optional<QString> fileToSave;
};

bool IsPlaceOfWindow(SettingNumber number) {
    return number < SettingNumber{4} ||
           (number >= SettingNumber{12} && number <= SettingNumber{27});
}

/// The whole program with the desktop's own dialogs.
class BoxesTest : public UiTest {
  protected:
    BoxesTest() {
        const std::string folder = folder_.path().toStdString() + "/";
        settings->SaveSetting(SettingNumber::SourceFolder, folder);
        settings->SaveSetting(SettingNumber::ObjectFolder, folder);
        settings->SaveSetting(SettingNumber::SerialPort, std::string("VIRTUAL"));
        leave_.setInterval(10);
        QObject::connect(&leave_, &QTimer::timeout, [this] { LeaveBox(); });
    }
    ~BoxesTest() override { Quit(); }

    void Start() {
        bench_ = std::make_unique<Workbench>(Workbench{
            *settings, configuration, desktop_, folder_.path().toStdString(), PathOf("data")});
        window =
            std::make_unique<MainWindow>(*bench_, [] { return std::vector<PortDescription>{}; });
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        window->activateWindow();
    }

    /// Ends the program without asking, and without leaving anything to recover.
    void Quit() {
        if (window == nullptr) return;
        window->findChild<RecoveryKeeper*>()->EndSession();
        window.reset();
    }

    SourceWindow* Open(const QString& name, const QByteArray& onDisk) {
        WriteFile(name, onDisk);
        return window->Files().OpenFile(folder_.path(), name);
    }

    SourceWindow* OpenChanged() {
        SourceWindow* source = Open("a.txt", "BEGIN PROGRAM\nEND PROGRAM\n");
        source->SetText("; typed\nBEGIN PROGRAM\nEND PROGRAM\n");
        return source;
    }

    SourceWindow* NeverSaved() {
        SourceWindow* source = window->Files().NewFile();
        source->SetText("; never saved\n");
        return source;
    }

    void Trigger(CommandId id) { window->Action(id)->trigger(); }

    /// What must be the same before and after: the open texts, the settings and, unless another
    /// program writes meanwhile, the source files.
    QString Everything(bool withFiles) {
        QString all;
        for (const SourceWindow* source : window->Files().Windows()) {
            all += source->FileName() + (source->SourceChanged() ? "* " : " ") + source->Text();
        }
        const QStringList files = QDir(folder_.path()).entryList({"*.txt", "*.obj", "*.Log"});
        for (const QString& file : withFiles ? files : QStringList()) {
            all += file + QString::fromUtf8(ReadFile(file));
        }
        for (const Setting& setting : Settings()) {
            if (IsPlaceOfWindow(setting.number)) continue;
            all += QString::fromStdString(AsText(settings->GetSetting(setting.number))) + '\n';
        }
        return all;
    }

    /// Asks, leaves every box that comes, and returns how many there were.
    int LeaveAll(const std::function<void()>& ask, Leave how) {
        how_ = how;
        left_.clear();
        leave_.start();
        ask();
        leave_.stop();
        return static_cast<int>(left_.size());
    }

    std::function<void(QWidget&)> beforeLeaving;  ///< acts on a box first
    std::unique_ptr<MainWindow> window;
    OwnDialogs desktop_;
    QStringList left_;

  private:
    void LeaveBox() {
        QWidget* box = QApplication::activeModalWidget();
        if (box == nullptr || !box->isVisible()) return;
        left_ += box->objectName() + box->windowTitle();
        if (beforeLeaving) beforeLeaving(*box);
        if (how_ == Leave::CloseButton) {
            box->close();
        } else {
            QWidget* focus = QApplication::focusWidget();
            const bool isInside = focus != nullptr && box->isAncestorOf(focus);
            QTest::keyClick(isInside ? focus : box,
                            how_ == Leave::Return ? Qt::Key_Return : Qt::Key_Escape);
        }
        ASSERT_FALSE(box == QApplication::activeModalWidget() && box->isVisible())
            << "stays open: " << left_.last().toStdString();
    }

    std::unique_ptr<Workbench> bench_;
    QTimer leave_;
    Leave how_ = Leave::Escape;
};

TEST_F(BoxesTest, EscapeChangesNothingWhateverIsAsked) {
    struct Question {
        const char* what;
        std::function<void()> prepare;
        std::function<void()> ask;
        bool writesOutside = false;
    };
    const auto press = [this](CommandId id) { return [this, id] { Trigger(id); }; };
    const auto changed = [this] { OpenChanged(); };
    const auto neverSaved = [this] { NeverSaved(); };
    const auto nothing = [] {};
    const std::vector<Question> questions{
        {"close a changed file", changed, press(CommandId::CloseSource)},
        {"close a text that was never saved", neverSaved, press(CommandId::CloseSource)},
        {"close a tab", changed,
         [this] { emit window->findChild<QTabBar*>()->tabCloseRequested(0); }},
        {"quit", changed, [this] { EXPECT_FALSE(window->close()); }},
        {"quit with a text that was never saved", neverSaved, press(CommandId::Exit)},
        {"open", changed, press(CommandId::OpenSource)},
        {"open an example", changed, press(CommandId::Examples)},
        {"save for the first time", neverSaved, press(CommandId::Save)},
        {"save as", changed, press(CommandId::SaveSourceAs)},
        {"save all", neverSaved, press(CommandId::SaveAll)},
        {"print", changed, press(CommandId::Print)},
        {"go to a line", changed, press(CommandId::Goto)},
        {"options", changed, press(CommandId::Options)},
        {"about", nothing, press(CommandId::About)},
        {"which file to compile",
         [this] {
             OpenChanged();
             NeverSaved();
         },
         press(CommandId::CompileSource)},
        {"may it be saved",
         [this] {
             OpenChanged();
             window->OpenPrograms().SetMain(window->OpenPrograms().Files()[0].id);
         },
         press(CommandId::CompileSource)},
        {"may it be saved before a check",
         [this] {
             NeverSaved();
             window->OpenPrograms().SetMain(window->OpenPrograms().Files()[0].id);
         },
         press(CommandId::SyntaxCheck)},
        {"load a file again that was changed outside", changed,
         [this] {
             WriteFile("a.txt", "; theirs\n");
             ASSERT_TRUE(QTest::qWaitFor([this] { return !left_.isEmpty(); }));
         },
         true},
        {"copies to recover",
         [this] {
             OpenChanged();
             window->findChild<RecoveryKeeper*>()->KeepAll();
         },
         press(CommandId::Recover)},
        {"which object file to send", [this] { Trigger(CommandId::OpenVirtualBoard); },
         press(CommandId::DownloadSaved)},
        {"where to log the session", [this] { Trigger(CommandId::OpenVirtualBoard); },
         [this] { window->findChild<QAbstractButton*>("BtnLog")->click(); }},
        {"may the log be created",
         [this] {
             Trigger(CommandId::OpenVirtualBoard);
             desktop_.fileToSave = FilePath("session.Log");
         },
         [this] { window->findChild<QAbstractButton*>("BtnLog")->click(); }},
    };
    // What a user has ticked or chosen before leaving counts for nothing either.
    beforeLeaving = [](QWidget& box) {
        if (auto* tick = box.findChild<QCheckBox*>("chkDontShow")) tick->click();
        if (auto* list = box.findChild<QListWidget*>("FileList")) list->setCurrentRow(0);
        for (const char* option : {"chkLoadLast", "chkShowObjectCode", "chkSaveB4CompileWarning"}) {
            if (auto* tick = box.findChild<QCheckBox*>(option)) tick->click();
        }
    };
    for (const Question& question : questions) {
        for (const Leave how : {Leave::Escape, Leave::CloseButton}) {
            SCOPED_TRACE(std::string(question.what) +
                         (how == Leave::Escape ? ", Escape" : ", close"));
            Start();
            question.prepare();
            const QString before = Everything(!question.writesOutside);
            EXPECT_GE(LeaveAll(question.ask, how), 1);
            EXPECT_EQ(Everything(!question.writesOutside), before);
            EXPECT_EQ(window->Compiler().Output(), nullptr);
            EXPECT_TRUE(window->isVisible());
            Quit();
            desktop_.fileToSave.reset();
            QFile::remove(FilePath("a.txt"));
        }
    }
}

/// A key for whatever has the focus, as a keyboard sends it.
void PressKey(Qt::Key key) {
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    QTest::keyClick(QApplication::focusWidget(), key);
}

// Who presses Return once more after a box must not write into the program.
TEST_F(BoxesTest, TheFocusGoesBackToTheToolThatRaisedTheBox) {
    struct Raised {
        const char* what;
        std::function<void()> open;
        const char* tool;
        std::function<void()> raise;
    };
    const auto find = [this](const char* button) {
        return [this, button] {
            window->findChild<QLineEdit*>("TxtToFind")->setText("Total");
            window->findChild<QAbstractButton*>(button)->setFocus();
            for (int i = 0; i < 3 && left_.isEmpty(); ++i)
                PressKey(Qt::Key_Space);
        };
    };
    const std::vector<Raised> boxes{
        {"Find with Return", [this] { Trigger(CommandId::Find); }, "frmFind",
         [this] {
             QTest::keyClicks(QApplication::focusWidget(), "Total");
             for (int i = 0; i < 3 && left_.isEmpty(); ++i)
                 PressKey(Qt::Key_Return);
         }},
        {"Find", [this] { Trigger(CommandId::Find); }, "frmFind", find("BtnFind")},
        {"Replace", [this] { Trigger(CommandId::Replace); }, "frmFind", find("BtnReplace")},
        {"Replace All", [this] { Trigger(CommandId::Replace); }, "frmFind", find("BtnReplaceAll")},
    };
    for (const Raised& row : boxes) {
        SCOPED_TRACE(row.what);
        Start();
        Open("a.txt", "Total = Total + 1\n");
        row.open();
        auto* tool = window->findChild<QWidget*>(row.tool);
        ASSERT_NE(tool, nullptr);
        ASSERT_TRUE(QTest::qWaitFor([tool] { return QApplication::activeWindow() == tool; }));
        EXPECT_EQ(LeaveAll(row.raise, Leave::Return), 1);
        EXPECT_TRUE(QTest::qWaitFor([tool] { return QApplication::activeWindow() == tool; }));
        const QWidget* focus = QApplication::focusWidget();
        ASSERT_NE(focus, nullptr);
        EXPECT_TRUE(tool->isAncestorOf(focus)) << focus->objectName().toStdString();
        Quit();
    }
}

}  // namespace
}  // namespace zentro
