#include <algorithm>
#include <cmath>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <limits>
#include <locale>
#include <optional>
#include <string>
#include <sys/file.h>
#include <sys/resource.h>
#include <unistd.h>
#include <vector>

#include "settings/settings_file.h"
#include "settings/settings_store.h"
#include "tests/ui/files/child_process.h"

namespace zentro {
namespace {

namespace fs = std::filesystem;
using enum SettingNumber;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;
using testing::UnorderedElementsAre;

const std::string kFile{kSettingsFileName};

/// A settings file whose lines end in "|" here.
std::string Lines(std::string text) {
    std::ranges::replace(text, '|', '\n');
    return text;
}

/// A folder of its own for each test, with a store that can be closed and opened again.
class SettingsStoreTest : public testing::Test {
  protected:
    SettingsStoreTest() { fs::create_directories(folder_); }
    ~SettingsStoreTest() override {
        Close();
        fs::remove_all(folder_);
    }

    SettingsStore& Open() {
        return store_.emplace(folder_, "/opt/zentro",
                              [this](const std::string& message) { lastFailure_ = message; });
    }
    void Close() { store_.reset(); }
    void Write(const std::string& bytes) { std::ofstream(folder_ / kFile) << bytes; }
    std::string Read(const std::string& name = kFile) {
        std::ifstream stream(folder_ / name);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    std::vector<std::string> Names() {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder_)) {
            names.push_back(entry.path().filename());
        }
        return names;
    }

    const fs::path folder_ =
        fs::path(testing::TempDir()) / ("zentro-settings-" + std::to_string(getpid()));
    std::string lastFailure_;
    std::optional<SettingsStore> store_;
};

TEST_F(SettingsStoreTest, FirstStartWritesEveryDefault) {
    EXPECT_EQ(Open().LoadError(), "");
    EXPECT_EQ(Read(), Lines(R"(0,"","COM1"|1,"",0|2,"",""|3,"",""|4,"",1|)"
                            R"(5,"",-2147483640|6,"",49152|7,"",4210752|8,"",-2147483643|)"
                            R"(9,"","/opt/zentro/ZentroCompiler.cfg"|10,"","/opt/zentro/"|)"
                            R"(11,"","/opt/zentro/"|12,"",0|13,"",0|14,"",6000|15,"",6300|)"
                            R"(16,"",6300|17,"",0|18,"",6300|19,"",6000|20,"",0|21,"",6000|)"
                            R"(22,"",12600|23,"",3000|24,"",2000|25,"",1000|26,"",7000|)"
                            R"(27,"",10000|28,"",0|29,"",0|30,"","/opt/zentro/ZentroCodeHelp.htm"|)"
                            R"(31,"",""|)"
                            R"(33,"",""|)"
                            R"(34,"","Courier New"|35,"",9.75|36,"",-1|37,"",1|38,"",0|)"
                            R"(39,"",0|40,"",1|41,"",""|42,"",""|43,"",60|44,"",0|)"));
    EXPECT_THAT(Names(), ElementsAre(kFile));
}

TEST_F(SettingsStoreTest, ChangesAreSavedAtTheEndAndComeBack) {
    Write("35,\"\",9.75\n");
    Open().SaveSetting(EditorFontSize, 12.5);
    store_->SaveSetting(ToolBarLayout, true, "Saved");
    Close();
    EXPECT_EQ(Read(), "35,\"\",12.5\n29,\"Saved\",#TRUE#\n");
    EXPECT_EQ(Open().GetSetting(EditorFontSize), SettingValue{12.5});
    EXPECT_EQ(store_->GetSetting(ToolBarLayout, "saved"), SettingValue{true});
    EXPECT_EQ(store_->GetSetting(ToolBarLayout), SettingValue{});
}

TEST_F(SettingsStoreTest, ANewerFlagThatAnOlderFileLacksHasItsDefault) {
    Write("36,\"\",-1\n");
    Open();
    EXPECT_TRUE(FlagIsOn(*store_, ColourSource));
    EXPECT_FALSE(FlagIsOn(*store_, ShowObjectCode)) << "a missing setting reads as 0";
    EXPECT_TRUE(FlagIsOn(*store_, CheckWhileTyping));
    EXPECT_FALSE(FlagIsOn(*store_, ReopenPortWhenBack));
    store_->SaveSetting(CheckWhileTyping, 0);
    EXPECT_FALSE(FlagIsOn(*store_, CheckWhileTyping));
}

TEST_F(SettingsStoreTest, AMalformedFileIsKeptByTheFirstSave) {
    const std::string broken = "4,\"\",1\n0,\"\",\"COM1\n";
    Write(broken);
    EXPECT_THAT(Open().LoadError(),
                StartsWith("Error occurred in LoadConfig. Error text is " +
                           (folder_ / kFile).string() + ", line 2: the value is neither"));
    EXPECT_EQ(store_->GetSetting(ShowObjectCode), SettingValue{std::int16_t{1}});
    EXPECT_EQ(store_->GetSetting(SerialPort), SettingValue{});
    Close();
    EXPECT_EQ(Read(), broken) << "nothing was changed, so nothing is saved";

    for (const std::string& kept : {kFile + ".broken", kFile + ".broken2"}) {
        Write(broken);
        EXPECT_THAT(Open().LoadError(), HasSubstr(" keeps the file as " + kept + "."));
        store_->SaveSetting(SerialPort, "COM7");
        EXPECT_EQ(store_->SaveSettings(), "");
        EXPECT_EQ(store_->SaveSettings(), "");
        EXPECT_EQ(Read(), "4,\"\",1\n0,\"\",\"COM7\"\n");
        EXPECT_EQ(Read(kept), broken);
    }
    EXPECT_THAT(Names(), UnorderedElementsAre(kFile, kFile + ".broken", kFile + ".broken2"));
}

TEST_F(SettingsStoreTest, HealsWhatIsMissingOrBroken) {
    struct Case {
        const char* file;
        bool isKept;  ///< under another name: somebody may want to mend it by hand
    };
    for (const Case& c : {Case{"", true}, Case{"35,\"\",\"large\"\n0,\"\",\"COM7\"\n", false},
                          Case{"0,\"\",\"COM7\"\n9,\"\",\n", false},
                          Case{"0,\"\",\"COM7\"\n4,\"\",1\n5,\"\",\"", true},
                          Case{"0,\"\",\"COM7\"\n\x01\x02 nonsense", true}}) {
        SCOPED_TRACE(c.file);
        for (const std::string& name : Names())
            fs::remove(folder_ / name);
        Write(c.file);
        EXPECT_EQ(Open().LoadError().empty(), !c.isKept);
        EXPECT_EQ(store_->Heal("/opt/zentro"), "");
        const auto expectWhole = [&] {
            EXPECT_EQ(store_->GetSetting(EditorFontSize), SettingValue{9.75});
            EXPECT_EQ(AsText(store_->GetSetting(InstructionFile)),
                      "/opt/zentro/ZentroCompiler.cfg");
            EXPECT_EQ(AsText(store_->GetSetting(SerialPort)), *c.file == '\0' ? "COM1" : "COM7");
        };
        expectWhole();
        EXPECT_EQ(fs::exists(folder_ / (kFile + ".broken")), c.isKept);
        EXPECT_EQ(Open().LoadError(), "") << "the next start finds the file whole";
        expectWhole();
    }
}

TEST_F(SettingsStoreTest, TwoRunsKeepEachOthersChanges) {
    Open();
    SettingsStore other(folder_, "/opt/zentro", {});
    store_->SaveSetting(SerialPort, "COM3");
    other.SaveSetting(EditorFontSize, 14.0);
    other.SaveSetting(ToolBarLayout, 1, "Saved");
    EXPECT_EQ(store_->SaveSettings(), "");
    EXPECT_EQ(other.SaveSettings(), "");
    store_->SaveSetting(CheckWhileTyping, 0);
    Close();
    Open();
    EXPECT_EQ(store_->GetSetting(SerialPort), SettingValue{"COM3"});
    EXPECT_EQ(store_->GetSetting(EditorFontSize), SettingValue{14.0});
    EXPECT_EQ(AsInteger(store_->GetSetting(ToolBarLayout, "Saved")), 1);
    EXPECT_EQ(AsInteger(store_->GetSetting(CheckWhileTyping)), 0);
}

/// One that was stopped in the middle of its save.
TEST_F(SettingsStoreTest, ARunThatHoldsTheFolderIsNotWaitedForForEver) {
    Open().SaveSetting(SerialPort, "COM3");
    const int other = open(folder_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    ASSERT_EQ(flock(other, LOCK_EX), 0);
    EXPECT_EQ(store_->SaveSettings(), "");
    close(other);
    Close();
    EXPECT_EQ(Open().GetSetting(SerialPort), SettingValue{"COM3"});
}

TEST_F(SettingsStoreTest, WhatIsNoFileIsReportedAndKept) {
    fs::create_directories(folder_ / kFile / "content");
    EXPECT_THAT(Open().LoadError(),
                StartsWith("Error occurred in LoadConfig. Error text is Is a directory"));
    EXPECT_EQ(store_->Records().Count(), 0U);
    EXPECT_EQ(store_->SaveSettings(), "");
    EXPECT_TRUE(fs::exists(folder_ / (kFile + ".broken") / "content"));
    EXPECT_EQ(Read(), "");
}

TEST_F(SettingsStoreTest, AFileTooLargeForSettingsIsReportedAndKept) {
    Write("0,\"\",\"COM1\"\n");
    fs::resize_file(folder_ / kFile, 100U << 20U);
    EXPECT_THAT(Open().LoadError(), HasSubstr("larger than 16 MB"));
    EXPECT_EQ(store_->GetSetting(SerialPort, "none"), SettingValue{});
    EXPECT_EQ(store_->SaveSettings(), "");
    EXPECT_EQ(fs::file_size(folder_ / (kFile + ".broken")), 100U << 20U);
}

TEST_F(SettingsStoreTest, AFailedSaveLeavesTheOldFile) {
    const std::string old = "0,\"\",\"COM1\"\n";
    Write(old);
    Open().SaveSetting(SerialPort, std::string(100, 'x'));
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    const rlimit full{50, limit.rlim_max};
    std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &full);
    const std::string error = store_->SaveSettings();
    Close();
    setrlimit(RLIMIT_FSIZE, &limit);
    EXPECT_EQ(error, "Error Saving Config: File too large");
    EXPECT_EQ(lastFailure_, error);
    EXPECT_EQ(Read(), old);
    EXPECT_THAT(Names(), ElementsAre(kFile));
}

TEST_F(SettingsStoreTest, WhatAKilledSaveLeftIsRemoved) {
    Write("0,\"\",\"/dev/tty\"\n");
    EXPECT_TRUE(KillAtFileSize(50, [this] {
        Open().SaveSetting(SerialPort, std::string(1000, 'x'));
        static_cast<void>(store_->SaveSettings());
    }));
    EXPECT_THAT(Names(), testing::SizeIs(2));
    EXPECT_EQ(Open().GetSetting(SerialPort), SettingValue{"/dev/tty"});
    EXPECT_THAT(Names(), ElementsAre(kFile));
}

TEST_F(SettingsStoreTest, ALinkIsFollowed) {
    std::ofstream(folder_ / "elsewhere") << "1,\"\",0\n";
    fs::create_symlink("elsewhere", folder_ / kFile);
    Open().SaveSetting(ReopenLastSource, 1);
    Close();
    EXPECT_TRUE(fs::is_symlink(folder_ / kFile));
    EXPECT_EQ(Read("elsewhere"), "1,\"\",1\n");
}

TEST_F(SettingsStoreTest, TheProgramFolderIsChosenWhenItCanBeWritten) {
    EXPECT_EQ(ChooseSettingsFolder(folder_, "/user"), folder_);
    EXPECT_EQ(ChooseSettingsFolder(folder_ / "missing", "/user"), "/user");
    EXPECT_EQ(ChooseSettingsFolder("/proc", "/user"), "/user");
    EXPECT_EQ(ChooseSettingsFolder("/proc", ""), "/proc");
    EXPECT_THAT(Names(), ElementsAre());
    EXPECT_THAT(SettingsStore("/proc/none", "/opt/zentro", {}).LoadError(),
                StartsWith("Error Saving Config: "));
    const SettingsStore store(folder_ / "new/folder", "/opt/zentro", {});
    EXPECT_EQ(store.LoadError(), "");
    EXPECT_TRUE(fs::exists(folder_ / "new/folder" / kFile));
}

TEST(SettingsFile, ReadsAndWritesEachKindOfValue) {
    struct Row {
        std::string read;
        SettingValue value;
        std::string written;
    };
    const Row rows[] = {
        {R"(12,"",32767)", std::int16_t{32767}, R"(12,"",32767)"},
        {R"(12,"",-32769)", std::int32_t{-32769}, R"(12,"",-32769)"},
        {R"(5,"",0)", std::int32_t{0}, R"(5,"",0)"},  // a colour
        {R"(5,"",-2147483648)", std::numeric_limits<std::int32_t>::min(), R"(5,"",-2147483648)"},
        {R"(12,"",2147483648)", 2147483648.0, R"(12,"",2147483648.0)"},
        {R"(99,"",10.0)", 10.0, R"(99,"",10.0)"},
        {R"(35,"",10)", 10.0, R"(35,"",10.0)"},  // a floating-point setting
        {R"(99,"",-1.5e3)", -1500.0, R"(99,"",-1500.0)"},
        {R"( 99 , "" , #true# )", true, R"(99,"",#TRUE#)"},
        {R"(99,"",#FALSE#)", false, R"(99,"",#FALSE#)"},
        {R"(99,"",)", std::monostate{}, R"(99,"",)"},
        {R"(99,"","9.75")", "9.75", R"(99,"","9.75")"},
        {"99,\"\",\" a, \"\"b\"\"\r\n\"", " a, \"b\"\r\n", "99,\"\",\" a, \"\"b\"\"\r\n\""},
    };
    for (const auto& [read, value, written] : rows) {
        const ParsedConfig parsed = ParseConfig("1,\"\",0\r\n\n" + read + "\r\n2,\"\",0");
        EXPECT_EQ(parsed.error, "") << read;
        ASSERT_EQ(parsed.config.Count(), 3U) << read;
        EXPECT_EQ(std::next(parsed.config.begin())->value, value) << read;
        EXPECT_EQ(WriteConfig(parsed.config), "1,\"\",0\n" + written + "\n2,\"\",0\n");
    }
}

TEST(SettingsFile, NamesTheLineOfTheFirstMalformedRecord) {
    const char* const rows[] = {
        R"(x)",         R"(0)",        R"(2147483648,"",0)", R"(1.0,"",0)",
        R"(5,,0)",      R"(5,"")",     R"(5,"a,0)",          R"(5,"",COM1)",
        R"(5,"","COM)", R"(5,"",0,1)", R"(5,"","a"b)",       R"(5,"",#NO#)",
        R"(5,"",inf)",  R"(5,"",1 2)", R"(5,"",1e999)",      R"(4,"A",0)"};  // there already
    for (const std::string row : rows) {
        const ParsedConfig parsed =
            ParseConfig(Lines(R"(3,"","a|b"|4,"a",1|)" + row + R"(|6,"",0|)"));
        EXPECT_NE(parsed.error, "") << row;
        EXPECT_EQ(parsed.line, 4U) << row;
        EXPECT_EQ(parsed.config.Count(), 2U) << row;
    }
}

TEST(SettingsFile, IsUtf8OrElseWindows1252) {
    const std::string rows[][2] = {
        {"\xEF\xBB\xBF\n0,\"\",\"é€𝄞\"", "é€𝄞"},
        {"0,\"\",\"\xE9\x80\x81\xFF\"", "é€\xC2\x81ÿ"},
        {"0,\"\",\"\xC0\xAF\"", "À¯"},                   // "/" in two bytes
        {"0,\"\",\"\xE0\x9F\xBF\"", "àŸ¿"},              // two bytes' worth in three
        {"0,\"\",\"\xED\xA0\x80\"", "í\xC2\xA0€"},       // half of a surrogate pair
        {"0,\"\",\"\xF4\x90\x80\x80\"", "ô\xC2\x90€€"},  // beyond the last character
        {"0,\"\",\"\xC3\"", "Ã"},
    };
    for (const auto& [bytes, text] : rows) {
        EXPECT_EQ(ParseConfig(bytes).config.Item(SerialPort), SettingValue{text});
    }
}

TEST(SettingsFile, DoesNotDependOnTheLocale) {
    struct Comma : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    const std::locale before = std::locale::global(std::locale(std::locale(), new Comma));
    const std::string text = "7,\"\",4210752\n35,\"\",9.75\n";
    EXPECT_EQ(WriteConfig(ParseConfig(text).config), text);
    std::locale::global(before);
}

TEST(Config, KeepsTheOrderAndIgnoresTheCaseOfSubKeys) {
    Config config;
    EXPECT_TRUE(config.AddOrUpdate(ToolBarLayout, 1, "Saved"));
    EXPECT_TRUE(config.AddOrUpdate(ToolBarLayout, 2));
    EXPECT_TRUE(config.AddOrUpdate(SerialPort, "COM1"));
    EXPECT_TRUE(config.AddOrUpdate(ToolBarLayout, 3, "SAVED"));
    EXPECT_FALSE(config.AddOrUpdate(ToolBarLayout, 3, "Saved"));
    EXPECT_EQ(WriteConfig(config), "29,\"Saved\",3\n29,\"\",2\n0,\"\",\"COM1\"\n");
    EXPECT_EQ(config.Search(ToolBarLayout, "sAVED"), &*config.begin());
    EXPECT_EQ(config.Search(ToolBarLayout, "other"), nullptr);
    EXPECT_EQ(config.Item(LastSourceName), SettingValue{});
    config.AddOrUpdate(EditorFontSize, 9);
    const std::string number = std::to_string(static_cast<int>(EditorFontSize));
    EXPECT_EQ(config.Search(SettingNumber{number[0] - '0'}, number.substr(1)), nullptr);
}

TEST(Config, TakesNothingThatTheFileCannotHold) {
    Config config;
    config.AddOrUpdate(SerialPort, "\xE9");  // would turn the whole file into Windows-1252
    config.AddOrUpdate(EditorFontSize, std::nan(""));
    EXPECT_EQ(config.Item(SerialPort), SettingValue{"é"});
    EXPECT_EQ(config.Item(EditorFontSize), SettingValue{});
}

TEST(SettingValue, IsReadAsTheCallerNeedsIt) {
    struct Row {
        SettingValue value;
        std::string text;
        double number;
        std::int32_t integer;
    };
    const Row rows[] = {{std::monostate{}, "", 0, 0},
                        {"COM1", "COM1", 0, 0},
                        {"12", "12", 12, 12},
                        {std::int16_t{-1}, "-1", -1, -1},
                        {9.75, "9.75", 9.75, 10},
                        {true, "1", 1, 1},
                        {false, "0", 0, 0},
                        {1e10, "10000000000.0", 1e10, std::numeric_limits<std::int32_t>::max()}};
    for (const Row& row : rows) {
        EXPECT_EQ(AsText(row.value), row.text);
        EXPECT_EQ(AsNumber(row.value), row.number) << row.text;
        EXPECT_EQ(AsInteger(row.value), row.integer) << row.text;
        EXPECT_EQ(AsBoolean(row.value), row.number != 0) << row.text;
    }
}

}  // namespace
}  // namespace zentro
