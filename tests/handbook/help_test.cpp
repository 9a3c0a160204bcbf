#include <QLabel>
#include <QLineEdit>
#include <QTextBlock>
#include <QTextBrowser>
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>

#include "model/diagnostics.h"
#include "tests/ui/ui_fixture.h"
#include "tools/handbook/handbook.h"
#include "tools/handbook/word_index.h"
#include "ui/dialogs/help_address.h"
#include "ui/dialogs/help_browser.h"
#include "ui/editor/statement_help.h"
#include "ui/shell/commands.h"

namespace zentro {
namespace {

/// The handbook as built, in the window that F1 opens.
class HandbookWindow : public UiTest {
  protected:
    HandbookWindow() : browser_(dialogs, *workbench->disk) {
        browser_.show();
        browser_.SetStartingAddress(ZENTRO_HANDBOOK);
    }

    bool Wait() {
        return QTest::qWaitFor([this] { return browser_.windowTitle().contains("Handbook"); });
    }

    /// The names of all places, in small letters.
    std::set<std::string> Places() const {
        std::set<std::string> places;
        for (QTextBlock block = page_.document()->begin(); block.isValid(); block = block.next()) {
            for (auto it = block.begin(); !it.atEnd(); ++it) {
                for (const QString& name : it.fragment().charFormat().anchorNames())
                    places.insert(name.toLower().toStdString());
            }
        }
        return places;
    }
    QString Place() const { return page_.source().fragment(QUrl::FullyDecoded).toLower(); }
    QString TextOnTop() const { return page_.cursorForPosition(QPoint(8, 8)).block().text(); }

    HelpBrowser browser_;
    QTextBrowser& page_ = *browser_.findChild<QTextBrowser*>();
};

std::string InSmallLetters(const std::string& text) {
    return QString::fromStdString(text).toLower().toStdString();
}

/// A line of a program with the caret at "|".
HelpTopic TopicAt(const CommandCatalogue& commands, std::string line) {
    const std::size_t column = line.find('|');
    line.erase(column, 1);
    const std::vector<ProgramName> names{{"Delay", "DEFINE BYTE Delay = 0", false},
                                         {"Hex", "DEFINE BYTE Hex = 0", false},
                                         {"Drive", "DEFINE ROUTINE Drive()", true}};
    return HelpTopicAt(commands, names, line, column);
}

TEST_F(HandbookWindow, OpensAtTheStatementUnderTheCaret) {
    ASSERT_TRUE(Wait());
    const std::set<std::string> places = Places();
    int entries = 0;
    for (const Command& entry : configuration.commands.Entries()) {
        // What the user never writes.
        if (entry.id == Token::KeywordList || entry.command == "<routine>") continue;
        ++entries;
        const std::string line = "  " + entry.command + " Some";
        for (std::size_t i = 2; i <= 2 + entry.command.size(); ++i) {
            const HelpTopic topic = HelpTopicAt(configuration.commands, {}, line, i);
            const auto page = std::ranges::find(topic.pages, entry.command);
            ASSERT_NE(page, topic.pages.end()) << line << " " << i;
            // Only longer words that the handbook does not have may stand before it.
            for (auto it = topic.pages.begin(); it != page; ++it)
                EXPECT_FALSE(places.contains(InSmallLetters(*it))) << *it;
        }
        browser_.ShowTopic(ZENTRO_HANDBOOK, {entry.command, {entry.command}});
        ASSERT_TRUE(Wait());
        EXPECT_THAT(TextOnTop().split(", "), testing::Contains(entry.command.c_str()))
            << entry.token;
    }
    EXPECT_GT(entries, 100);
}

TEST_F(HandbookWindow, OpensAtWhatIsUnderTheCaret) {
    struct Row {
        const char* line;
        QString top;  ///< empty: there is no page
    };
    ASSERT_TRUE(Wait());
    for (const auto& [line, top] : std::vector<Row>{
             {"S|ET MOTOR 1, FORWARD, Delay", "SET MOTOR"},
             {"    set  mot|or 1, f, 60", "SET MOTOR"},
             {"SET MOTOR| 1, FORWARD, 60", "SET MOTOR"},
             {"SET MOTOR 1|, FORWARD, 60", "SET MOTOR"},
             {"|    SET MOTOR 1, FORWARD, 60", "SET MOTOR"},
             {"SET MOTOR 1, FOR|WARD, 60", "FORWARD, BACKWARD"},
             {"SET MOTOR 1, FORWARD, Del|ay", ""},
             {"SET |", "SET"},
             {"|LEDS", "SET LEDS"},
             {"print 5|", "print"},
             {"Delay = 5|", "ZentroCompiler Handbook"},
             {"SET MOTOR FROM VARI|ABLES", "SET MOTOR FROM VARIABLES"},
             {"SET SERVO PERC|ENT 1, F, 5", "SET SERVO PERCENT"},
             {"DEF|INE BYTE Delay = 0", "DEFINE BYTE"},
             {"DEFINE BYTE De|lay = 0", ""},
             {"DEFINE BYTE Delay = 0|", "DEFINE BYTE"},
             {"DEFINE ROUTINE Go(Left BY|TE) RETURNS WORD", "BYTE, WORD, FLAG, POINTER"},
             {"DEFINE ROUTINE Go(Left BYTE) RETURNS WO|RD",
              "RETURNS BYTE, RETURNS WORD, RETURNS FLAG, RETURNS POINTER"},
             {"CALL Dri|ve(60)", ""},
             {"CALL Drive(6|0)", "CALL"},
             {"DISPLAY He|x", "DISPLAY HEX"},  // as the compiler reads it
             {"Delay = ANA|LOG(1)", "ANALOG"},
             {"Delay = ANALOG(|1)", "ANALOG"},
             {"Delay = JOYSTICK(1, \"X|\")", "JOYSTICK, STICK"},
             {"Delay |= 5", "="},
             {"IF Delay <|= 5 THEN", "<=, =<, >=, =>"},
             {"IF Delay <= 5 TH|EN", "IF, THEN, END IF"},
             {"END I|F", "IF, THEN, END IF"},
             {"Delay = Delay M|OD 2", "/, MOD"},
             {"Delay |=-1", "="},
             {"IF Delay =|= 5 THEN", "=="},
             {"IF Delay !|= 5 THEN", "!="},
             {"Delay+|+", "++"},
             {"prin|t Delay", "print"},
             {"sl|eep(100)", "sleep"},
             {"delay|er = 5", ""},
             {"ELSE I|F Delay = 2 THEN", "else if"},
             {"EL|SE", "ELSE"},
             {"REPEAT 4 TIM|ES", "times"},
             {"/|/ a note", "//"},
             {"STOP MOTORS |; WAIT is better", ";"},
             {"STOP MOTORS ; WA|IT is better", "WAIT"},
             {"VARIABLES|", "variables"},
             {"|", "ZentroCompiler Handbook"},
         }) {
        const HelpTopic topic = TopicAt(configuration.commands, line);
        browser_.ShowTopic(ZENTRO_HANDBOOK, topic);
        ASSERT_TRUE(Wait());
        const QString status = browser_.findChild<QLabel*>("lblStatus")->text();
        if (top.isEmpty()) {
            EXPECT_EQ(status.toStdString(),
                      "There is no page for \"" + topic.word + "\" in this book.")
                << line;
        } else {
            EXPECT_EQ(status, "") << line;
            EXPECT_EQ(TextOnTop(), top) << line;
        }
    }
}

TEST_F(HandbookWindow, OpensAtEveryWordAndMessage) {
    ASSERT_TRUE(Wait());
    std::vector<std::string> words = KeywordsOf(configuration.commands);
    const std::set<std::string> unreachable{"E2", "E7", "E59"};  // no program provokes them
    for (const MessageCode code : MessageCodes()) {
        if (!unreachable.contains(MessageCodeText(code))) words.push_back(MessageCodeText(code));
    }
    const std::set<std::string> places = Places();
    for (const std::string& word : words)
        EXPECT_TRUE(places.contains(InSmallLetters(word))) << word;
}

TEST_F(HandbookWindow, LeadsFromOtherLanguagesWordsToTheirRows) {
    ASSERT_TRUE(Wait());
    std::vector<std::string> problems;
    const std::vector<OtherWord> words = OtherWords(configuration, problems);
    EXPECT_TRUE(problems.empty());
    QStringList known;
    auto& field = *browser_.findChild<QLineEdit*>("txtSearch");
    for (const OtherWord& other : words) {
        const QString word = QString::fromStdString(other.word);
        known += word;
        const HelpTopic topic = HelpTopicAt(configuration.commands, {}, other.word, 0);
        EXPECT_THAT(topic.pages, testing::Not(testing::IsEmpty())) << other.word;
        browser_.ShowTopic(ZENTRO_HANDBOOK, topic);
        ASSERT_TRUE(Wait());
        const QString byKey = Place();
        field.setText(word);
        QTest::keyClick(&field, Qt::Key_Return);
        EXPECT_EQ(Place(), byKey) << other.word;
        if (!other.isOwn) {
            EXPECT_EQ(TextOnTop(), word);
        }
    }
    for (const char* word :
         {"print", "for", "while", "wait", "sleep", "delay", "if", "else if", "function", "def",
          "goto", "repeat n times", "variables", "arrays", "random", "comments", "//", "#"})
        EXPECT_TRUE(known.contains(word)) << word;
}

TEST_F(HandbookWindow, TellsTheKeysOfTheMenus) {
    ASSERT_TRUE(Wait());
    const std::string book = page_.toPlainText().simplified().toStdString();
    for (const CommandRow& command : Commands()) {
        if (*command.shortcut == '\0') continue;
        const MenuRow& menu = *std::ranges::find(Menus(), command.menu, &MenuRow::id);
        const QString row =
            QString("%1 %2, %3").arg(command.shortcut, menu.caption, command.caption).remove('&');
        EXPECT_THAT(book, testing::HasSubstr(row.simplified().toStdString()));
    }
}

}  // namespace
}  // namespace zentro
