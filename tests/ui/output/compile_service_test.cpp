#include "ui/output/compile_service.h"

#include <QTimer>

#include "desktop/program_files.h"
#include "tests/ui/ui_fixture.h"

namespace zentro {
namespace {

/// Keeps the log and does something when its first piece arrives.
class KeptOutput : public OutputSink {
  public:
    void Write(std::string_view piece, LogColour, const PostedMessage* message) override {
        text += piece;
        if (message != nullptr && message->severity == Severity::Error)
            errors.push_back(message->code);
        if (const auto act = std::exchange(atFirst, nullptr)) act();
    }

    std::string text;
    std::vector<MessageCode> errors;
    std::function<void()> atFirst;
};

class KeptListing : public ListingSink {
  public:
    void AddCodeLine(std::string_view) override { ++lines; }
    int lines = 0;
};

constexpr const char* kProgram =
    "DEFINE BYTE Count = 0\r\nBEGIN PROGRAM\r\nCount = 1\r\nEND PROGRAM\r\n";

class Service : public UiTest {
  protected:
    Service() : service(*workbench) {
        settings->SaveSetting(SettingNumber::SourceFolder, folder_.path().toStdString());
        settings->SaveSetting(SettingNumber::ObjectFolder, folder_.path().toStdString() + "/");
    }

    ProgramFiles FilesOf(const std::string& name) {
        return ProgramFilesFor(folder_.path().toStdString(), name, *settings);
    }

    CompileService service;
    KeptOutput output;
    KeptListing listing;
};

TEST_F(Service, FindsThePlacesOfAProgramInTheSettings) {
    settings->SaveSetting(SettingNumber::SourceFolder, "/includes/");
    settings->SaveSetting(SettingNumber::ObjectFolder, "/objects");
    ProgramFiles files = ProgramFilesFor("/mine", "line.follower.txt", *settings);
    EXPECT_EQ(files.sourceDirectory, "/mine");
    EXPECT_EQ(files.sourceFileName, "line.follower.txt");
    EXPECT_EQ(files.includeDirectory, "/includes/");
    EXPECT_EQ(files.objectDirectory, "/objects");
    EXPECT_EQ(files.objectFileName, "line.obj");
    settings->SaveSetting(SettingNumber::SourceFolder, "");
    settings->SaveSetting(SettingNumber::ObjectFolder, "");
    files = ProgramFilesFor("/mine", "blink", *settings);
    EXPECT_EQ(files.includeDirectory, "/mine");
    EXPECT_EQ(files.objectDirectory, "/mine");
    EXPECT_EQ(files.objectFileName, "blink.obj");
}

TEST_F(Service, KeepsTheLastRunWhenItsWindowsAreGone) {
    WriteFile("main.txt", kProgram);
    EXPECT_EQ(service.Last(), nullptr);
    {
        KeptOutput closedSoon;
        EXPECT_TRUE(service.Compile(FilesOf("main.txt"), closedSoon, &listing));
    }
    ASSERT_NE(service.Last(), nullptr);
    EXPECT_EQ(static_cast<int>(service.Last()->objectLines.size()), listing.lines);
    EXPECT_EQ(service.Last()->diagnostics.ErrorCount(), 0);
    std::vector<bool> present;
    QObject::connect(&service, &CompileService::LastChanged,
                     [&] { present.push_back(service.Last() != nullptr); });
    EXPECT_TRUE(service.Check(FilesOf("main.txt"), output));
    EXPECT_EQ(present, (std::vector{false, true}));
}

TEST_F(Service, FillsTheListingWhenTheSettingsWantIt) {
    WriteFile("main.txt", kProgram);
    EXPECT_TRUE(service.Compile(FilesOf("main.txt"), output, &listing));
    EXPECT_GT(listing.lines, 0);
    const QByteArray object = ReadFile("main.obj");
    listing.lines = 0;
    ASSERT_TRUE(QFile::remove(FilePath("main.obj")));
    settings->SaveSetting(SettingNumber::ShowObjectCode, 0);
    EXPECT_TRUE(service.Compile(FilesOf("main.txt"), output, &listing));
    EXPECT_EQ(listing.lines, 0);
    EXPECT_EQ(ReadFile("main.obj"), object);
}

TEST_F(Service, AsksForAMissingFile) {
    WriteFile("main.txt", QByteArray("INCLUDE \"gone.txt\"\r\n") + kProgram);
    EXPECT_FALSE(service.Compile(FilesOf("main.txt"), output, nullptr));
    EXPECT_EQ(dialogs.lastChoice.title, "Cannot Find gone.txt");
    EXPECT_EQ(dialogs.lastChoice.folder, folder_.path());
    EXPECT_EQ(dialogs.lastChoice.suggestedName, "gone.txt");
    EXPECT_EQ(output.errors, std::vector{MessageCode::FileNotOpened});

    WriteFile("found.txt", "DEFINE BYTE Found = 0\r\n");
    dialogs.fileToOpen = FilePath("found.txt");
    output.errors.clear();
    EXPECT_TRUE(service.Compile(FilesOf("main.txt"), output, nullptr));
    EXPECT_TRUE(output.errors.empty());
}

// The object file is written, but an error is an error.
TEST_F(Service, AProgramThatDoesNotFitTheBoardHasFailed) {
    WriteFile("main.txt",
              "DEFINE TABLE First\r\nRESERVE 20000\r\nEND TABLE\r\n"
              "DEFINE TABLE Second\r\nRESERVE 20000\r\nEND TABLE\r\n"
              "BEGIN PROGRAM\r\nEND PROGRAM\r\n");
    EXPECT_FALSE(service.Compile(FilesOf("main.txt"), output, nullptr));
    EXPECT_EQ(output.errors, std::vector{MessageCode::ProgramTooLarge});
}

TEST_F(Service, TellsWhyTheObjectFileCannotBeWritten) {
    WriteFile("main.txt", kProgram);
    settings->SaveSetting(SettingNumber::ObjectFolder, PathOf("nowhere"));
    EXPECT_FALSE(service.Compile(FilesOf("main.txt"), output, &listing));
    EXPECT_EQ(output.errors, std::vector{MessageCode::OutsideFailure});
    ASSERT_EQ(dialogs.shown.size(), 1);
    EXPECT_TRUE(dialogs.shown[0].contains(FilePath("nowhere/main.obj")));
    EXPECT_TRUE(dialogs.shown[0].contains("No such file or directory"));
}

TEST_F(Service, DoesNotReplaceTheSourceByItsObjectFile) {
    WriteFile("main.obj", kProgram);
    EXPECT_FALSE(service.Compile(FilesOf("main.obj"), output, nullptr));
    EXPECT_EQ(ReadFile("main.obj"), kProgram);
    EXPECT_EQ(output.text, "");
    EXPECT_EQ(dialogs.shown.size(), 1);
}

TEST_F(Service, LetsTheWindowsLiveDuringARunButRefusesASecondOne) {
    WriteFile("main.txt", kProgram);
    const ProgramFiles files = FilesOf("main.txt");
    KeptOutput second;
    bool ranMeanwhile = false;
    QTimer meanwhile;
    meanwhile.setSingleShot(true);
    QObject::connect(&meanwhile, &QTimer::timeout, [&] {
        ranMeanwhile = service.IsRunning();
        EXPECT_EQ(service.Last(), nullptr);
        EXPECT_FALSE(service.Compile(files, second, &listing));
        EXPECT_FALSE(service.Check(files, second));
    });
    output.atFirst = [&] {
        meanwhile.start(0);
        QTest::qSleep(30);  // long enough for the next line to let events run
    };
    EXPECT_TRUE(service.Compile(files, output, nullptr));
    EXPECT_TRUE(ranMeanwhile);
    EXPECT_EQ(second.text, "");
    EXPECT_EQ(listing.lines, 0);
    EXPECT_EQ(dialogs.shown.size(), 2);
    EXPECT_FALSE(service.IsRunning());
    EXPECT_TRUE(service.Check(files, second));
}

}  // namespace
}  // namespace zentro
