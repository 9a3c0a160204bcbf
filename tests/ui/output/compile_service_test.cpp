#include "desktop/compile_service.h"

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

/// Answers what the compiler asks, and keeps what it tells.
class KeptPrompts : public Prompts {
  public:
    void ShowMessage(std::string_view text) override { shown.emplace_back(text); }
    std::optional<std::string> FindMissingFile(std::string_view title, std::string_view directory,
                                               std::string_view fileName) override {
        asked = {std::string(title), std::string(directory), std::string(fileName)};
        return fileInstead;
    }

    std::vector<std::string> shown;
    std::vector<std::string> asked;
    std::optional<std::string> fileInstead;
};

class Service : public UiTest {
  protected:
    Service() : service(configuration, *settings, programs, prompts) {
        settings->SaveSetting(SettingNumber::SourceFolder, folder_.path().toStdString());
        settings->SaveSetting(SettingNumber::ObjectFolder, folder_.path().toStdString() + "/");
    }

    /// Opens a file with the text that lies on the disk.
    OpenFile Open(const QString& name, const QByteArray& text) {
        WriteFile(name, text);
        const FileId id =
            programs.Add(folder_.path(), name, [text] { return QString::fromUtf8(text); });
        return *programs.File(id);
    }
    bool Compile(const OpenFile& file, OutputSink& log, ListingSink* list) {
        const auto program = service.Compile(file, log, list);
        return program != nullptr && program->succeeded;
    }

    Programs programs{*workbench->disk};
    KeptPrompts prompts;
    CompileService service;
    KeptOutput output;
    KeptListing listing;
};

TEST_F(Service, FindsThePlacesOfAProgramInTheSettings) {
    settings->SaveSetting(SettingNumber::SourceFolder, "/includes/");
    settings->SaveSetting(SettingNumber::ObjectFolder, "/objects");
    OpenFile file;
    file.folder = "/mine";
    file.name = "line.follower.txt";
    ProgramFiles files = ProgramFilesOf(file, *settings);
    EXPECT_EQ(files.sourceDirectory, "/mine");
    EXPECT_EQ(files.sourceFileName, "line.follower.txt");
    EXPECT_EQ(files.includeDirectory, "/includes/");
    EXPECT_EQ(files.objectDirectory, "/objects");
    EXPECT_EQ(files.objectFileName, "line.obj");
    settings->SaveSetting(SettingNumber::SourceFolder, "");
    settings->SaveSetting(SettingNumber::ObjectFolder, "");
    file.name = "blink";
    files = ProgramFilesOf(file, *settings);
    EXPECT_EQ(files.includeDirectory, "/mine");
    EXPECT_EQ(files.objectDirectory, "/mine");
    EXPECT_EQ(files.objectFileName, "blink.obj");
}

TEST_F(Service, KeepsWhatItCompiledAsLongAsSomebodyNeedsIt) {
    const OpenFile file = Open("main.txt", kProgram);
    std::shared_ptr<const CompiledProgram> first;
    {
        KeptOutput closedSoon;
        first = service.Compile(file, closedSoon, &listing);
    }
    ASSERT_NE(first, nullptr);
    EXPECT_TRUE(first->succeeded);
    EXPECT_EQ(programs.CompiledFrom(file.key), first);
    EXPECT_EQ(static_cast<int>(first->compilation->objectLines.size()), listing.lines);
    EXPECT_TRUE(programs.IsUpToDate(*first));
    // Another run, and one that fails, leave it whole.
    EXPECT_TRUE(service.Check(file, output));
    programs.NoteEdited(file.id);
    EXPECT_FALSE(programs.IsUpToDate(*first));
    WriteFile("main.txt", "x");
    EXPECT_FALSE(Compile(file, output, nullptr));
    EXPECT_EQ(programs.CompiledFrom(file.key), first);
    EXPECT_EQ(first->compilation->sourceLines.size(), 4U);
}

TEST_F(Service, FillsTheListingWhenTheSettingsWantIt) {
    const OpenFile file = Open("main.txt", kProgram);
    EXPECT_TRUE(Compile(file, output, &listing));
    EXPECT_GT(listing.lines, 0);
    const QByteArray object = ReadFile("main.obj");
    listing.lines = 0;
    ASSERT_TRUE(QFile::remove(FilePath("main.obj")));
    settings->SaveSetting(SettingNumber::ShowObjectCode, 0);
    EXPECT_TRUE(Compile(file, output, &listing));
    EXPECT_EQ(listing.lines, 0);
    EXPECT_EQ(ReadFile("main.obj"), object);
}

TEST_F(Service, AsksForAMissingFile) {
    const OpenFile file = Open("main.txt", QByteArray("INCLUDE \"gone.txt\"\r\n") + kProgram);
    EXPECT_FALSE(Compile(file, output, nullptr));
    EXPECT_EQ(prompts.asked, (std::vector<std::string>{"Cannot Find gone.txt",
                                                       folder_.path().toStdString(), "gone.txt"}));
    EXPECT_EQ(output.errors, std::vector{MessageCode::FileNotOpened});

    WriteFile("found.txt", "DEFINE BYTE Found = 0\r\n");
    prompts.fileInstead = PathOf("found.txt");
    output.errors.clear();
    EXPECT_TRUE(Compile(file, output, nullptr));
    EXPECT_TRUE(output.errors.empty());
}

// The object file is written, but an error is an error.
TEST_F(Service, AProgramThatDoesNotFitTheBoardHasFailed) {
    const OpenFile file = Open("main.txt",
                               "DEFINE TABLE First\r\nRESERVE 20000\r\nEND TABLE\r\n"
                               "DEFINE TABLE Second\r\nRESERVE 20000\r\nEND TABLE\r\n"
                               "BEGIN PROGRAM\r\nEND PROGRAM\r\n");
    EXPECT_FALSE(Compile(file, output, nullptr));
    EXPECT_EQ(output.errors, std::vector{MessageCode::ProgramTooLarge});
}

TEST_F(Service, TellsWhyTheObjectFileCannotBeWritten) {
    const OpenFile file = Open("main.txt", kProgram);
    settings->SaveSetting(SettingNumber::ObjectFolder, PathOf("nowhere"));
    EXPECT_FALSE(Compile(file, output, &listing));
    EXPECT_EQ(output.errors, std::vector{MessageCode::OutsideFailure});
    ASSERT_EQ(prompts.shown.size(), 1U);
    EXPECT_TRUE(prompts.shown[0].find(PathOf("nowhere/main.obj")) != std::string::npos);
    EXPECT_TRUE(prompts.shown[0].find("No such file or directory") != std::string::npos);
}

TEST_F(Service, DoesNotReplaceTheSourceByItsObjectFile) {
    const OpenFile file = Open("main.obj", kProgram);
    EXPECT_EQ(service.Compile(file, output, nullptr), nullptr);
    EXPECT_EQ(ReadFile("main.obj"), kProgram);
    EXPECT_EQ(output.text, "");
    EXPECT_EQ(prompts.shown.size(), 1U);
}

TEST_F(Service, DoesNotReplaceAnIncludedSourceByItsObjectFile) {
    const QByteArray part = "DEFINE BYTE Part = 0\r\n";
    WriteFile("main.obj", part);
    const OpenFile file = Open("main.txt", QByteArray("INCLUDE \"main.obj\"\r\n") + kProgram);
    EXPECT_FALSE(Compile(file, output, nullptr));
    EXPECT_EQ(ReadFile("main.obj"), part);
    EXPECT_EQ(prompts.shown, std::vector<std::string>{
                                 "The object file '" + PathOf("main.obj") +
                                 "' would replace the source file '" + PathOf("main.obj") +
                                 "', which the program includes. Give one of them another name."});
}

TEST_F(Service, LetsTheWindowsLiveDuringARunButRefusesASecondOne) {
    const OpenFile file = Open("main.txt", kProgram);
    KeptOutput second;
    bool ranMeanwhile = false;
    QTimer meanwhile;
    meanwhile.setSingleShot(true);
    QObject::connect(&meanwhile, &QTimer::timeout, [&] {
        ranMeanwhile = service.IsRunning();
        EXPECT_FALSE(service.Compile(file, second, &listing) != nullptr);
        EXPECT_FALSE(service.Check(file, second));
    });
    output.atFirst = [&] {
        meanwhile.start(0);
        QTest::qSleep(30);  // long enough for the next line to let events run
    };
    EXPECT_TRUE(Compile(file, output, nullptr));
    EXPECT_TRUE(ranMeanwhile);
    EXPECT_EQ(second.text, "");
    EXPECT_EQ(listing.lines, 0);
    EXPECT_EQ(prompts.shown.size(), 2U);
    EXPECT_FALSE(service.IsRunning());
    EXPECT_TRUE(service.Check(file, second));
}

}  // namespace
}  // namespace zentro
