#include <QCheckBox>
#include <QFileSystemModel>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTreeView>
#include <QTreeWidget>

#include "settings/settings_file.h"
#include "tests/ui/ui_fixture.h"
#include "ui/dialogs/options_dialog.h"

namespace zentro {
namespace {

using enum SettingNumber;

class OptionsTest : public UiTest {
  protected:
    /// Starts again with a settings file that has these lines alone.
    void Reload(const QByteArray& lines) {
        settings.reset();
        WriteFile("ZentroCompiler.dfv", lines);
        const std::filesystem::path folder = folder_.path().toStdString();
        settings = std::make_unique<SettingsStore>(folder, folder, [](const std::string&) {});
        workbench = std::make_unique<Workbench>(
            Workbench{*settings, configuration, dialogs, folder, folder / "data"});
    }

    void Open() {
        dialog_ = std::make_unique<OptionsDialog>(*workbench, [this] { return present_; });
        dialog_->show();
    }

    template <typename Control>
    Control& Get(const char* name) {
        auto* control = dialog_->findChild<Control*>(name);
        EXPECT_NE(control, nullptr) << name;
        return *control;
    }

    /// On the control's own page. A check box answers to a click on its box alone.
    void Click(const char* name) {
        auto& control = Get<QAbstractButton>(name);
        QTest::mouseClick(&control, Qt::LeftButton, {}, {8, control.height() / 2});
    }

    void ShowPage(const char* key) {
        auto& tabs = Get<QTabBar>("TabStrip1");
        for (int tab = 0; tab < tabs.count(); ++tab) {
            if (tabs.tabData(tab) == key)
                QTest::mouseClick(&tabs, Qt::LeftButton, {}, tabs.tabRect(tab).center());
        }
    }

    void Type(const char* name, const QString& text) {
        auto& field = Get<QLineEdit>(name);
        field.selectAll();
        QTest::keyClicks(&field, text);
    }

    QString Port() const {
        return QString::fromStdString(AsText(settings->GetSetting(SerialPort)));
    }

    std::vector<PortDescription> present_;
    std::unique_ptr<OptionsDialog> dialog_;
};

TEST_F(OptionsTest, OkWritesEveryOptionInItsOrder) {
    Reload("29,\"Saved\",1\n10,\"\",\"" + folder_.path().toUtf8() + "/\"\n");
    Open();
    Click("cmdOK");
    EXPECT_EQ(dialogs.shown, QStringList());
    EXPECT_EQ(dialog_->result(), QDialog::Accepted);
    EXPECT_EQ(ReadFile("ZentroCompiler.dfv").replace(folder_.path().toUtf8(), "HERE"),
              "29,\"Saved\",1\n10,\"\",\"HERE/\"\n36,\"\",0\n1,\"\",0\n4,\"\",0\n28,\"\",0\n"
              "0,\"\",\"\"\n9,\"\",\"\"\n30,\"\",\"\"\n31,\"\",\"\"\n33,\"\",\"\"\n8,\"\",0\n"
              "5,\"\",0\n34,\"\",\"Courier New\"\n35,\"\",9.75\n7,\"\",0\n6,\"\",0\n37,\"\",1\n"
              "40,\"\",1\n38,\"\",0\n11,\"\",\"\"\n");
}

TEST_F(OptionsTest, WhatTheUserChangesIsSavedAndNothingElse) {
    const QByteArray before = ReadFile("ZentroCompiler.dfv");
    Open();
    for (const char* box : {"chkColourSource", "chkLoadLast", "chkShowObjectCode",
                            "chkSaveB4CompileWarning", "chkCheckWhileTyping", "chkReopenPort"})
        Click(box);
    EXPECT_EQ(
        dialogs.shown,
        QStringList("OK. You must close any open source files for the change to effect them."));
    dialogs.colour = QColor(1, 2, 3);
    Click("cmdChangeTerminalText");
    dialogs.colour.reset();  // cancelled
    Click("cmdChangeEditPage");
    dialogs.font = QFont("Monospace", 13);
    Click("btnFontToUse");
    EXPECT_EQ(Get<QLabel>("lblEditColours").font().family(), "Monospace");
    EXPECT_EQ(Get<QLabel>("lblTerminalColours").palette().color(QPalette::WindowText),
              QColor(1, 2, 3));
    ShowPage("Advanced");
    EXPECT_TRUE(Get<QWidget>("FrameAdvanced").isVisible());
    EXPECT_FALSE(Get<QWidget>("FrameGeneralOptions").isVisible());
    dialogs.fileToOpen = "/x/other.htm";
    Click("cmdHelpfileName");
    EXPECT_EQ(dialogs.lastChoice.filters, "ZentroCompiler Help Files|*.htm");
    EXPECT_EQ(dialogs.lastChoice.folder + '/' + dialogs.lastChoice.suggestedName,
              FilePath("ZentroCodeHelp.htm"));
    Type("txtCogwrightSite", "https://b.example/");
    QTest::keyClick(dialog_.get(), Qt::Key_Return);

    QByteArray expected = before;
    const QByteArray changes[][2] = {{"36,\"\",-1", "36,\"\",0"},
                                     {"\n1,\"\",0", "\n1,\"\",1"},
                                     {"\n4,\"\",1", "\n4,\"\",0"},
                                     {"28,\"\",0", "28,\"\",1"},
                                     {"37,\"\",1", "37,\"\",0"},
                                     {"38,\"\",0", "38,\"\",1"},
                                     {"\n6,\"\",49152", "\n6,\"\",197121"},
                                     {"Courier New", "Monospace"},
                                     {"9.75", "13.0"},
                                     {FilePath("ZentroCodeHelp.htm").toUtf8(), "/x/other.htm"},
                                     {"\n31,\"\",\"\"", "\n31,\"\",\"https://b.example/\""}};
    for (const auto& [old, changed] : changes) {
        EXPECT_EQ(expected.count(old), 1) << old.toStdString();
        expected.replace(old, changed);
    }
    EXPECT_EQ(ReadFile("ZentroCompiler.dfv"), expected);
}

/// Colours once chosen are no longer the desktop's, which turn with its light or dark style.
TEST_F(OptionsTest, TheDefaultColoursCanBeChosenAgain) {
    QByteArray before = ReadFile("ZentroCompiler.dfv");
    before.replace("36,\"\",-1", "36,\"\",1");  // as OK writes it
    Open();
    dialogs.colour = QColor(1, 2, 3);
    for (const char* button : {"cmdChangeEditPage", "cmdChangeEditText", "cmdChangeTerminalPage",
                               "cmdChangeTerminalText"})
        Click(button);
    Click("cmdOK");
    EXPECT_EQ(ReadFile("ZentroCompiler.dfv").count("197121"), 4);
    Open();
    Click("cmdDefaultEditColours");
    Click("cmdDefaultTerminalColours");
    Click("cmdOK");
    EXPECT_EQ(ReadFile("ZentroCompiler.dfv"), before);
}

TEST_F(OptionsTest, TheObjectFolderIsChosenTypedOrLeftToTheSource) {
    Open();
    ShowPage("Advanced");
    dialogs.folder = folder_.path();
    Click("cmdObjectFolder");
    dialogs.folder.reset();  // cancelled
    Click("cmdObjectFolder");
    Click("cmdOK");
    const auto saved = [&] { return AsText(settings->GetSetting(ObjectFolder)); };
    EXPECT_EQ(saved(), folder_.path().toStdString() + '/');
    Open();
    ShowPage("Advanced");
    EXPECT_EQ(Get<QLineEdit>("txtObjectFolder").text(), folder_.path());
    Type("txtObjectFolder", "/robots//");
    Click("cmdOK");
    EXPECT_EQ(saved(), "/robots/");
    Open();
    ShowPage("Advanced");
    Get<QLineEdit>("txtObjectFolder").clear();
    Click("cmdOK");
    EXPECT_EQ(saved(), "");
}

TEST_F(OptionsTest, CancelWritesNothing) {
    const QByteArray before = ReadFile("ZentroCompiler.dfv");
    const std::string records = WriteConfig(settings->Records());
    Open();
    Click("chkLoadLast");
    ShowPage("Kinetron");
    Type("txtOtherComport", "com7");
    Click("cmdCancel");
    EXPECT_FALSE(dialog_->isVisible());
    EXPECT_EQ(WriteConfig(settings->Records()), records);
    EXPECT_EQ(ReadFile("ZentroCompiler.dfv"), before);
}

TEST_F(OptionsTest, EveryPortNameIsShownTypedAndSaved) {
    struct Row {
        const char* setting;
        const char* typed;  ///< after the dialog has opened; null: nothing
        int checked;        ///< the button of COM1 to COM4; 0: Other
        const char* other;
        const char* saved;
    };
    constexpr Row rows[] = {
        {"com3", nullptr, 3, "", "COM3"},
        {"COM5", nullptr, 0, "COM5", "COM5"},
        {"/dev/ttyUSB0", nullptr, 0, "/dev/ttyUSB0", "/dev/ttyUSB0"},
        {"COM3", "com7", 0, "COM7", "COM7"},
        {"COM3", "/dev/ttyUSB0", 0, "/dev/ttyUSB0", "/dev/ttyUSB0"},
        {"COM3", "x\b", 0, "", "COM3"},  // emptied again
    };
    for (const Row& row : rows) {
        settings->SaveSetting(SerialPort, row.setting);
        Open();
        ShowPage("Kinetron");
        auto& other = Get<QLineEdit>("txtOtherComport");
        for (const char* key = row.typed; key != nullptr && *key != '\0'; ++key) {
            if (*key == '\b')
                QTest::keyClick(&other, Qt::Key_Backspace);
            else
                QTest::keyClick(&other, *key);
        }
        EXPECT_EQ(other.text(), row.other);
        constexpr const char* buttons[] = {"OptOther", "optCom1", "OptCom2", "OptCom3", "OptCom4"};
        for (int button = 0; button <= 4; ++button) {
            EXPECT_EQ(Get<QRadioButton>(buttons[button]).isChecked(), button == row.checked)
                << row.setting << button;
        }
        Click("cmdOK");
        EXPECT_EQ(Port(), row.saved);
    }
}

TEST_F(OptionsTest, PresentPortsCanBeChosenAsTheyComeAndGo) {
    const PortDescription adapter{"/dev/ttyUSB0", "Adapter", UsbIdentity{0x1A86, 0x7523, "5"}};
    Open();
    ShowPage("Kinetron");
    auto& list = Get<QTreeWidget>("lstPresentPorts");
    const auto click = [&](int row) {
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {},
                          list.visualItemRect(list.topLevelItem(row)).center());
    };
    ASSERT_EQ(list.topLevelItemCount(), 1);
    click(0);
    EXPECT_EQ(Get<QLineEdit>("txtOtherComport").text(), "VIRTUAL BOARD");

    present_ = {adapter};
    ASSERT_TRUE(QTest::qWaitFor([&] { return list.topLevelItemCount() == 2; }));
    EXPECT_EQ(list.topLevelItem(0)->text(2), "1A86:7523, serial number 5");
    EXPECT_TRUE(list.topLevelItem(1)->isSelected());
    click(0);
    present_ = {};
    ASSERT_TRUE(QTest::qWaitFor([&] { return list.topLevelItemCount() == 1; }));
    EXPECT_EQ(list.selectedItems().size(), 0);
    EXPECT_EQ(Get<QLineEdit>("txtOtherComport").text(), "/dev/ttyUSB0") << "stays chosen";
    present_ = {{"/dev/ttyS0", "Built in", {}}};
    ASSERT_TRUE(QTest::qWaitFor([&] { return list.topLevelItemCount() == 2; }));
    Click("optCom1");
    EXPECT_EQ(Get<QLineEdit>("txtOtherComport").text(), "");
    EXPECT_EQ(Get<QLabel>("lblPortToUse").text(), "Port to use: COM1, which is /dev/ttyS0");
    EXPECT_TRUE(list.topLevelItem(0)->isSelected());
    Click("cmdOK");
    EXPECT_EQ(Port(), "COM1");
}

TEST_F(OptionsTest, ADoubleClickOrEnterChoosesTheFolder) {
    ASSERT_TRUE(QDir(folder_.path()).mkdir("first"));
    ASSERT_TRUE(QDir(folder_.path()).mkdir("second"));
    settings->SaveSetting(SourceFolder, PathOf("first/"));
    Open();
    auto& tree = Get<QTreeView>("DirDefaultSource");
    auto& folders = static_cast<QFileSystemModel&>(*tree.model());
    EXPECT_EQ(Get<QLabel>("lblSelectedPath").text(), FilePath("first"));
    const auto place = [&] { return tree.visualRect(folders.index(FilePath("second"))); };
    ASSERT_TRUE(QTest::qWaitFor([&] { return tree.viewport()->rect().contains(place().center()); }))
        << "the tree opens where the chosen folder is";
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, place().center());
    EXPECT_EQ(Get<QLabel>("lblSelectedPath").text(), FilePath("first"));
    QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, place().center());
    EXPECT_EQ(Get<QLabel>("lblSelectedPath").text(), FilePath("second"));
    tree.setCurrentIndex(folders.index("/"));
    QTest::keyClick(&tree, Qt::Key_Return);
    EXPECT_EQ(Get<QLabel>("lblSelectedPath").text(), "/");
    ASSERT_TRUE(dialog_->isVisible()) << "Enter in the tree is not OK";
    Click("cmdOK");
    EXPECT_EQ(AsText(settings->GetSetting(SourceFolder)), "//");
    Open();
    EXPECT_EQ(Get<QLabel>("lblSelectedPath").text(), "/");
}

TEST_F(OptionsTest, UnreadableValuesAreReportedAndTheOthersLoaded) {
    Reload("36,\"\",\"yes\"\n10,\"\",\"/no/such\"\n8,\"\",\"blue\"\n35,\"\",0\n6,\"\",255\n");
    Open();
    const QString start = "Error Loading config information for : ";
    EXPECT_EQ(dialogs.shown,
              QStringList({start + "Loading Flags, \"yes\" is not a number",
                           start + "Source Directory, No such file or directory",
                           start + "Edit Page Colour, \"blue\" is not a number",
                           start + "Font Size, the size 0.0 is not between 1 and 400 points"}));
    EXPECT_TRUE(Get<QCheckBox>("chkColourSource").isChecked()) << "the default";
    EXPECT_EQ(Get<QLabel>("lblTerminalColours").palette().color(QPalette::WindowText),
              QColor(255, 0, 0));
    Click("cmdOK");
    EXPECT_EQ(AsText(settings->GetSetting(SourceFolder)), "/no/such/") << "a drive may come back";
    EXPECT_EQ(AsNumber(settings->GetSetting(EditorFontSize)), 9.75);
}

TEST_F(OptionsTest, AFailedSaveIsReported) {
    Open();
    settings.reset();
    Reload("");
    Open();
    ASSERT_TRUE(QFile::remove(FilePath("ZentroCompiler.dfv")));
    ASSERT_TRUE(QFile::link("/no/such/folder/settings", FilePath("ZentroCompiler.dfv")));
    Click("cmdOK");
    ASSERT_EQ(dialogs.shown.size(), 1);
    EXPECT_TRUE(dialogs.shown[0].startsWith("Error Saving Config: "))
        << dialogs.shown[0].toStdString();
    EXPECT_FALSE(dialog_->isVisible());
}

}  // namespace
}  // namespace zentro
