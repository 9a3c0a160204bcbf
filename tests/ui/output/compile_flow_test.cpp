#include "ui/output/compile_flow.h"

#include <QCheckBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>

#include "tests/ui/ui_fixture.h"

namespace zentro {
namespace {

struct FakeFile {
    OpenFileName name;
    bool hasChanged = false;
    bool wasNeverSaved = false;
};

class FakeFiles : public OpenFiles {
  public:
    QList<OpenFileName> Names() const override {
        QList<OpenFileName> names;
        for (const FakeFile& file : files)
            names += file.name;
        return names;
    }
    std::optional<int> FrontFile() const override { return front; }
    std::optional<int> MainFile() const override { return mainFile; }
    void SetMainFile(int file) override { mainFile = file; }
    std::optional<int> OpenFromDisk(const QString& folder, const QString& name) override {
        if (!canOpen) return std::nullopt;
        files.push_back({{name, folder}});
        return static_cast<int>(files.size()) - 1;
    }
    bool HasChanged(int file) const override { return At(file).hasChanged; }
    bool WasNeverSaved(int file) const override { return At(file).wasNeverSaved; }
    bool Save(int) override {
        ++saves;
        return canSave;
    }

    std::vector<FakeFile> files{{{"one.txt", "/a"}}, {{"two.txt", "/a"}}, {{"one.txt", "/b"}}};
    std::optional<int> front;
    std::optional<int> mainFile;
    bool canOpen = true;
    bool canSave = true;
    int saves = 0;

  private:
    const FakeFile& At(int file) const { return files[static_cast<std::size_t>(file)]; }
};

template <typename Control>
Control* Find(QDialog& dialog, const char* name) {
    auto* const control = dialog.findChild<Control*>(name);
    EXPECT_NE(control, nullptr) << name;
    return control;
}

void Press(QDialog& dialog, std::string_view button) {
    if (button == "Escape") return QTest::keyClick(&dialog, Qt::Key_Escape);
    QTest::mouseClick(Find<QPushButton>(dialog, button.data()), Qt::LeftButton);
}

void ClickRow(QDialog& dialog, int row) {
    auto* const list = Find<QListWidget>(dialog, "FileList");
    const QPoint place = list->visualItemRect(list->item(row)).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place);
}

class CompileFlow : public UiTest {
  protected:
    std::optional<int> Prepare(CompileCommand command = CompileCommand::Compile) {
        return PrepareMainFile(command, files, *workbench, nullptr);
    }
    /// Lets the test act on the dialog while it is shown.
    void WhenAsked(std::function<void(QDialog&)> act) {
        dialogs.run = [this, act = std::move(act)](QDialog& dialog) {
            ++asked;
            dialog.show();
            act(dialog);
            return dialog.result() == QDialog::Accepted;
        };
    }

    FakeFiles files;
    int asked = 0;
};

TEST_F(CompileFlow, AsksOnceForTheMainFileAmongTheOpenOnes) {
    WhenAsked([](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), "frmCompileSelect");
        EXPECT_EQ(dialog.windowTitle(), "Please Select");
        EXPECT_EQ(dialog.findChild<QLabel*>()->text(),
                  "Please select the file to begin with (Key)");
        const auto* const list = Find<QListWidget>(dialog, "FileList");
        ASSERT_EQ(list->count(), 3);
        EXPECT_NE(list->item(0)->text(), list->item(2)->text()) << "two files of one name";
        const auto* const ok = Find<QPushButton>(dialog, "OKButton");
        EXPECT_FALSE(ok->isEnabled());
        ClickRow(dialog, 1);
        EXPECT_TRUE(ok->isEnabled());
        Press(dialog, "OKButton");
    });
    EXPECT_EQ(Prepare(), 1);
    EXPECT_EQ(files.mainFile, 1);
    EXPECT_EQ(Prepare(CompileCommand::SyntaxCheck), 1);
    EXPECT_EQ(asked, 1);
    files.mainFile.reset();
    EXPECT_EQ(Prepare(), 1);
    EXPECT_EQ(asked, 2);
}

TEST_F(CompileFlow, EnterTakesTheFileInFront) {
    files.front = 2;
    WhenAsked([](QDialog& dialog) {
        EXPECT_EQ(Find<QListWidget>(dialog, "FileList")->selectedItems().size(), 1);
        QTest::keyClick(Find<QListWidget>(dialog, "FileList"), Qt::Key_Return);
    });
    EXPECT_EQ(Prepare(), 2);
    EXPECT_EQ(files.mainFile, 2);
}

TEST_F(CompileFlow, TakesAFileFromDisk) {
    settings->SaveSetting(SettingNumber::SourceFolder, "/programs/");
    dialogs.fileToOpen = "/elsewhere/three.txt";
    WhenAsked([](QDialog& dialog) { Press(dialog, "BtnSelectFromDisk"); });
    EXPECT_EQ(Prepare(), 3);
    EXPECT_EQ(files.mainFile, 3);
    EXPECT_EQ(files.files[3].name.name, "three.txt");
    EXPECT_EQ(files.files[3].name.folder, "/elsewhere");
    EXPECT_EQ(dialogs.lastChoice.folder, "/programs/");
    EXPECT_EQ(dialogs.lastChoice.filters, "Source (Text) Files|*.txt");
    EXPECT_EQ(dialogs.lastChoice.defaultSuffix, "txt");
}

TEST_F(CompileFlow, StopsWithoutAMainFile) {
    const auto cancel = [](QDialog& dialog) {
        Press(dialog, "BtnSelectFromDisk");  // whose dialog is cancelled too
        EXPECT_TRUE(dialog.isVisible());
        Press(dialog, "CancelButton");
    };
    WhenAsked(cancel);
    EXPECT_EQ(Prepare(), std::nullopt);
    EXPECT_EQ(dialogs.shown, QStringList{});
    EXPECT_EQ(Prepare(CompileCommand::SyntaxCheck), std::nullopt);
    EXPECT_EQ(dialogs.shown, QStringList{"Compile Cancelled"});

    dialogs.fileToOpen = "/elsewhere/broken.txt";
    files.canOpen = false;
    WhenAsked([](QDialog& dialog) { Press(dialog, "BtnSelectFromDisk"); });
    EXPECT_EQ(Prepare(), std::nullopt);
    EXPECT_EQ(files.mainFile, std::nullopt);
}

struct SaveCase {
    const char* what;
    bool hasChanged;
    bool wasNeverSaved;
    int saveWithoutAsking;
    const char* button;  ///< pressed in the warning, or the key; nullptr: there is to be none
    bool tick;
    bool canSave;
    bool goesOn;
    int saves;
    int settingAfter;
};

constexpr SaveCase kSaveCases[]{
    {"unchanged", false, false, 0, nullptr, false, true, true, 0, 0},
    {"OK saves", true, false, 0, "OKButton", false, true, true, 1, 0},
    {"OK and no more warnings", true, false, 0, "OKButton", true, true, true, 1, 1},
    {"no warning wanted", true, false, 1, nullptr, false, true, true, 1, 1},
    {"Cancel compiles what is on disk", true, false, 0, "CancelButton", false, true, true, 0, 0},
    {"Cancel and no more warnings", true, false, 0, "CancelButton", true, true, true, 0, 1},
    {"Escape stops", true, false, 0, "Escape", true, true, false, 0, 0},
    {"a new file asks for its name", false, true, 0, nullptr, false, true, true, 1, 0},
    {"a new file without a name", false, true, 0, nullptr, false, false, false, 1, 0},
    {"a new file that is not saved", true, true, 0, "CancelButton", false, true, false, 0, 0},
    {"a save that fails", true, false, 0, "OKButton", false, false, false, 1, 0},
};

TEST_F(CompileFlow, SavesBeforeACompile) {
    for (const SaveCase& row : kSaveCases) {
        SCOPED_TRACE(row.what);
        files = {};
        files.files = {{{"main.txt", "/a"}, row.hasChanged, row.wasNeverSaved}};
        files.mainFile = 0;
        files.canSave = row.canSave;
        dialogs.shown.clear();
        asked = 0;
        settings->SaveSetting(SettingNumber::SaveWithoutAsking, row.saveWithoutAsking);
        WhenAsked([&](QDialog& dialog) {
            EXPECT_EQ(dialog.objectName(), "frmSaveWarning");
            EXPECT_EQ(dialog.windowTitle(), "Warning!");
            auto* const box = dialog.findChild<QCheckBox*>();
            EXPECT_EQ(box->text(), "Dont Show this warning again");
            bool saysSo = false;
            for (const QLabel* label : dialog.findChildren<QLabel*>())
                saysSo = saysSo || label->text().contains("was never saved");
            EXPECT_EQ(saysSo, row.wasNeverSaved);
            if (row.tick) QTest::keyClick(box, Qt::Key_Space);
            Press(dialog, row.button);
        });
        EXPECT_EQ(Prepare(CompileCommand::SyntaxCheck).has_value(), row.goesOn);
        EXPECT_EQ(asked, row.button == nullptr ? 0 : 1);
        EXPECT_EQ(files.saves, row.saves);
        EXPECT_EQ(AsInteger(settings->GetSetting(SettingNumber::SaveWithoutAsking)),
                  row.settingAfter);
        EXPECT_EQ(dialogs.shown, row.goesOn ? QStringList{} : QStringList{"Compile Cancelled"});
    }
}

}  // namespace
}  // namespace zentro
