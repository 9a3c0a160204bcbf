#include <QTextBlock>
#include <QTextBrowser>
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/ui/ui_fixture.h"
#include "tools/handbook/handbook.h"
#include "ui/dialogs/help_address.h"
#include "ui/dialogs/help_browser.h"
#include "ui/shell/commands.h"

namespace zentro {
namespace {

/// The handbook as built, in the window that F1 opens.
class HandbookWindow : public UiTest {
  protected:
    HandbookWindow() : browser_(dialogs) {
        browser_.show();
        browser_.SetStartingAddress(ZENTRO_HANDBOOK);
    }

    bool Wait() {
        return QTest::qWaitFor([this] { return browser_.windowTitle().contains("Handbook"); });
    }

    QString TextOnTop() const { return page_.cursorForPosition(QPoint(8, 8)).block().text(); }

    HelpBrowser browser_;
    QTextBrowser& page_ = *browser_.findChild<QTextBrowser*>();
};

TEST_F(HandbookWindow, OpensAtTheWordUnderTheCaret) {
    ASSERT_TRUE(Wait());
    for (const auto& [word, title] : std::vector<std::pair<QString, QString>>{
             {"motor", "SET MOTOR"},
             {"MOTOR", "SET MOTOR"},
             {"Analog", "ANALOG"},
             {"Hex", "DISPLAY HEX"},
             {"IF", "IF, THEN, END IF"},
             {"E53", "E53: error"},
         }) {
        browser_.SearchForHelp(word);
        ASSERT_TRUE(Wait());
        EXPECT_EQ(TextOnTop(), title) << word.toStdString();
    }
    for (const std::string& word : KeywordsOf(configuration.commands)) {
        const QString text = QString::fromStdString(word);
        EXPECT_TRUE(HasAnchor(*page_.document(), text)) << word;
        EXPECT_TRUE(HasAnchor(*page_.document(), text.toLower())) << word;
    }
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
