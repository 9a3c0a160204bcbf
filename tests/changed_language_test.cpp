// The language is read from a file: words that this version does not know, messages of other
// severities and entries that are missing.
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/compile_fixture.h"

namespace zentro {
namespace {

using test::Program;
using testing::ElementsAre;
using testing::IsEmpty;

/// The shipped language in which `from`, up to the end of its line, is replaced.
std::unique_ptr<InstructionConfiguration> Language(const std::string& from, const std::string& to) {
    std::string text = test::ReadFile(ZENTRO_SHIPPED_CONFIG);
    const std::size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    text.replace(at, text.find('\n', at) + 1 - at, to);
    auto language = std::make_unique<InstructionConfiguration>();
    EXPECT_EQ(ParseInstructionConfig(std::move(text), *language), "");
    return language;
}

/// A program of one line in its main block, which is line 3.
std::string ProgramOf(const std::string& line) {
    return "DEFINE BYTE Small = 0\nBEGIN PROGRAM\n" + line + "\nEND PROGRAM\n";
}

TEST(ChangedLanguage, WordsWithoutAMeaningAreRefused) {
    const auto language =
        Language("\"D1\"",
                 "\"D1\",\"DEFINE BYTE\",\"\"\n\"D99\",\"MAKE\",\"\"\n"
                 "\"S99\",\"HOP\",\"\"\n\"X9\",\"NEW\",\"\"\n\"CX\",\"SHARE\",\"\"\n"
                 "\"M99\",\"XOR\",\"\"\n\"F99\",\"SEE\",\"\"\n");
    struct Row {
        const char* line;
        const char* code;
    };
    for (const Row& row : {Row{"MAKE Small", "E506"},
                           {"HOP 3", "E506"},
                           {"NEW", "E506"},
                           {"SHARE ALL", "E506"},
                           {"XOR", "E506"},
                           {"SEE()", "E17"},
                           {"Small = Small XOR 1", "E33"},
                           {"Small = SEE()", "E39"}}) {
        Program program(ProgramOf(row.line), *language);
        program.Compile();
        EXPECT_THAT(program.Messages(), ElementsAre(std::string(row.code) + " main.txt:3"))
            << row.line;
    }
}

/// Whoever changes the file can make errors into warnings. Lines that could not be understood have
/// no object code then.
TEST(ChangedLanguage, NoSeverityLeadsToHarm) {
    namespace fs = std::filesystem;
    for (const char severity : {'1', '2', '3'}) {
        std::string text = test::ReadFile(ZENTRO_SHIPPED_CONFIG);
        for (std::size_t at = text.find("\n\"E"); at != std::string::npos;
             at = text.find("\n\"E", at + 1)) {
            text[text.find("\"\n", at + 1) - 1] = severity;
        }
        InstructionConfiguration language;
        ASSERT_EQ(ParseInstructionConfig(std::move(text), language), "");
        for (const auto& file : fs::directory_iterator(ZENTRO_TESTS_FOLDER "/messages")) {
            if (file.is_directory()) continue;
            std::string program;
            for (const std::string& line :
                 test::Split(test::ReadFile(file.path()) + "\n; ====", '\n')) {
                program += line + "\n";
                if (!line.starts_with("; ====")) continue;
                Program compiled(program, language);
                compiled.Compile();
                EXPECT_EQ(compiled.compilation.diagnostics.ErrorCount(), 0) << file.path();
                program.clear();
            }
        }
    }
}

struct SeverityRow {
    const char* entry;
    const char* replaced;
    const char* line;
    const char* box;  ///< what is shown at once; empty: nothing
    const char* log;  ///< what stands in the log
};

TEST(ChangedLanguage, AMessageCanBeShownAtOnceOrBeMissing) {
    for (const SeverityRow& row :
         {SeverityRow{"\"E15\"", "\"E15\",\"What is this?\",\"3\"\n", "HOP", "E15:What is this?",
                      ""},
          {"\"E64\"", "\"E64\",\"Unknown.\",\"3\"\n", "Small = Nobody",
           "E64:Unknown.\r\n\r\nNobody", ""},
          {"\"E24\"", "\"E24\",\"Misfit.\",\"3\"\n", "SET EVENT 1, Small", "",
           " E24: Small - Misfit."},
          {"\"E64\"", "", "Small = Nobody",
           "Could not retrieve Error Message 'E64'. ZentroCode.cfg may be an old version or "
           "corrupted",
           ""},
          {"\"E24\"", "", "SET EVENT 1, Small",
           "Could not retrieve Error Message 'E24'. ZentroCode.cfg may be an old version or "
           "corrupted",
           ""},
          {"\"C2\"", "", "STOP SOUND",
           "Could not locate Constant C2 Config file may be corrupt or wrong version.", ""},
          {"\"E2009\"", "", "SET EVENT 1, Small", "", " E24: Small - This does not fit"}}) {
        const auto language = Language(row.entry, row.replaced);
        Program program(ProgramOf(row.line), *language);
        EXPECT_EQ(program.Compile(), std::string(row.line) == "STOP SOUND") << row.line;
        if (*row.box == '\0') {
            EXPECT_THAT(program.prompts.shown, IsEmpty()) << row.line;
        } else {
            EXPECT_THAT(program.prompts.shown, ElementsAre(row.box)) << row.line;
        }
        EXPECT_THAT(program.output.log, testing::HasSubstr(row.log)) << row.line;
    }
}

}  // namespace
}  // namespace zentro
