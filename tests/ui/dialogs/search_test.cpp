#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTextCursor>

#include "tests/ui/ui_fixture.h"
#include "ui/dialogs/find_dialog.h"

namespace zentro {
namespace {

/// Text boxes in tabs, which are searched by their own find operation.
class TextBoxes : public SearchTargets {
  public:
    std::vector<std::unique_ptr<QPlainTextEdit>> boxes;
    int front = 1;

    explicit TextBoxes(const QStringList& texts) {
        for (const QString& text : texts)
            boxes.push_back(std::make_unique<QPlainTextEdit>(text));
    }

    QPlainTextEdit& Front() { return *boxes[static_cast<std::size_t>(front - 1)]; }
    /// The tab in front and where its selection begins and ends: "2:4-8".
    QString Place() {
        const QTextCursor cursor = Front().textCursor();
        return QString("%1:%2-%3")
            .arg(front)
            .arg(cursor.selectionStart())
            .arg(cursor.selectionEnd());
    }
    QString Text(int tab) { return boxes[static_cast<std::size_t>(tab - 1)]->toPlainText(); }

    int TabCount() const override { return static_cast<int>(boxes.size()); }
    int FrontTab() const override { return boxes.empty() ? 0 : front; }
    void BringToFront(int tab) override { front = tab; }
    int Find(const QString& text, bool continueSearch, FindOptions options) override {
        QTextCursor cursor = Front().textCursor();
        int from = continueSearch ? cursor.selectionStart() : 0;
        if (continueSearch && cursor.selectedText().compare(text, Qt::CaseInsensitive) == 0) ++from;
        QTextDocument::FindFlags flags;
        flags.setFlag(QTextDocument::FindCaseSensitively, options.testFlag(FindOption::MatchCase));
        flags.setFlag(QTextDocument::FindWholeWords, options.testFlag(FindOption::WholeWord));
        const QTextCursor match = Front().document()->find(text, from, flags);
        if (match.isNull()) return -1;
        Front().setTextCursor(match);
        return match.selectionStart();
    }
    bool ReplaceIfSelected(const QString& text, const QString& replacement) override {
        QTextCursor cursor = Front().textCursor();
        if (cursor.selectedText().compare(text, Qt::CaseInsensitive) != 0) return false;
        cursor.insertText(replacement);
        Front().setTextCursor(cursor);
        return true;
    }
};

/// The dialog with a search behind it, as the main window connects them.
class SearchTest : public UiTest {
  protected:
    void Open(const QStringList& texts) {
        targets_ = std::make_unique<TextBoxes>(texts);
        search_ = std::make_unique<SourceSearch>(*targets_);
        dialog_ = std::make_unique<FindDialog>();
        const auto tell = [this](SearchResult result) { told_ = SearchResultText(result); };
        QObject::connect(
            dialog_.get(), &FindDialog::FindText, dialog_.get(),
            [this, tell](const QString& text, FindOptions options, bool allFiles, bool newSearch) {
                tell(search_->FindText(text, options, allFiles, newSearch));
            });
        QObject::connect(dialog_.get(), &FindDialog::ReplaceText, dialog_.get(),
                         [this, tell](const QString& text, const QString& replacement,
                                      FindOptions options, bool allFiles) {
                             tell(search_->ReplaceText(text, replacement, options, allFiles));
                         });
        QObject::connect(dialog_.get(), &FindDialog::ReplaceAllText, dialog_.get(),
                         [this](const QString& text, const QString& replacement,
                                FindOptions options, bool allFiles) {
                             told_ = ReplacedText(
                                 text, search_->ReplaceAll(text, replacement, options, allFiles));
                         });
        dialog_->ShowFind();
    }

    void Type(const char* name, const QString& text) {
        auto* field = dialog_->findChild<QLineEdit*>(name);
        field->selectAll();
        QTest::keyClicks(field, text);
    }

    /// Presses a button and returns where the search has got to, or what the user was told.
    QString Press(const char* name) {
        told_.clear();
        auto* button = dialog_->findChild<QAbstractButton*>(name);
        QTest::mouseClick(button, Qt::LeftButton, {}, {8, button->height() / 2});
        return told_.isEmpty() ? targets_->Place() : told_;
    }

    QString Caption() { return dialog_->findChild<QPushButton*>("BtnFind")->text(); }

    std::unique_ptr<TextBoxes> targets_;
    std::unique_ptr<SourceSearch> search_;
    std::unique_ptr<FindDialog> dialog_;
    QString told_;
};

constexpr auto kEndOfFile = "End of File. Search again to restart";
constexpr auto kEndOfAll = "Searched all open files. Search again to restart";

TEST_F(SearchTest, FindsInTheWindowInFrontAndStartsAgainAfterItsEnd) {
    Open({"wait", "Wait await; WAIT", "wait"});
    targets_->front = 2;
    EXPECT_FALSE(dialog_->findChild<QPushButton*>("BtnFind")->isEnabled()) << "nothing to find";
    Type("TxtToFind", "wait");
    EXPECT_EQ(Caption(), "Find");
    EXPECT_EQ(Press("BtnFind"), "2:0-4");
    EXPECT_EQ(Caption(), "Find Next");
    EXPECT_EQ(QApplication::clipboard()->text(), "wait");
    EXPECT_EQ(Press("BtnFind"), "2:6-10");
    Press("CheckWholeWord");
    EXPECT_EQ(Press("BtnFind"), "2:12-16");
    EXPECT_EQ(Press("BtnFind"), kEndOfFile);
    EXPECT_EQ(SearchResultText(search_->FindNext()), "");
    EXPECT_EQ(targets_->Place(), "2:0-4");
    Press("CheckMatchCase");
    EXPECT_EQ(Press("BtnFind"), kEndOfFile) << "no whole word in small letters";
    Type("TxtToFind", "WAIT");
    EXPECT_EQ(Caption(), "Find");
    EXPECT_EQ(Press("BtnFind"), "2:12-16");
}

TEST_F(SearchTest, FindsInAllFilesInTheOrderOfTheTabs) {
    Open({"a", "xbxb", "b"});
    targets_->front = 3;
    Type("TxtToFind", "b");
    Press("OptionOpenSource");
    EXPECT_EQ(Press("BtnFind"), "2:1-2");
    EXPECT_EQ(Press("BtnFind"), "2:3-4");
    EXPECT_EQ(SearchResultText(search_->FindNext()), "");
    EXPECT_EQ(targets_->Place(), "3:0-1");
    EXPECT_EQ(Press("BtnFind"), kEndOfAll);
    EXPECT_EQ(Press("BtnFind"), "2:1-2");
    targets_->boxes.resize(1);  // the file that was being searched is closed
    targets_->front = 1;
    EXPECT_EQ(Press("BtnFind"), kEndOfAll);
    targets_->boxes.clear();
    EXPECT_EQ(Press("BtnFind"), "There is no open source file to search.");
}

TEST_F(SearchTest, ReplacesTheSelectionAndGoesOnBehindIt) {
    Open({"On on ON", "on"});
    Type("TxtToFind", "on");
    Type("txtToReplace", "onon");
    EXPECT_EQ(Press("BtnReplace"), "1:0-2") << "nothing was selected: it only searches";
    EXPECT_EQ(Press("BtnReplace"), "1:5-7") << "not what was inserted";
    EXPECT_EQ(QApplication::clipboard()->text(), "on");
    Press("OptionOpenSource");
    EXPECT_EQ(Press("BtnReplace"), "1:10-12");
    EXPECT_EQ(Press("BtnReplace"), "2:0-2");
    EXPECT_EQ(Press("BtnReplace"), kEndOfAll);
    EXPECT_EQ(targets_->Text(1), "onon onon onon");
    EXPECT_EQ(targets_->Text(2), "onon");
}

TEST_F(SearchTest, ReplacesAllAndTellsTheCount) {
    Open({"on On\non", "on", "off"});
    targets_->front = 2;
    Type("TxtToFind", "on");
    Type("txtToReplace", "on1");
    EXPECT_EQ(Press("BtnReplaceAll"), "1 occurrence of \"on\" was replaced.");
    Press("OptionOpenSource");
    Press("CheckWholeWord");
    EXPECT_EQ(Press("BtnReplaceAll"), "3 occurrences of \"on\" were replaced.");
    EXPECT_EQ(targets_->front, 2);
    EXPECT_EQ(targets_->Text(1), "on1 on1\non1");
    EXPECT_EQ(targets_->Text(2), "on1");
    EXPECT_EQ(Press("BtnReplaceAll"), "\"on\" was not found.");
}

TEST_F(SearchTest, KeepsTheLastTextsAndSelectsTheTextOnEntering) {
    Open({"a b"});
    for (const char* text : {"a", "b", "a"}) {
        Type("TxtToFind", text);
        QTest::keyClick(dialog_.get(), Qt::Key_Return);
    }
    auto* field = dialog_->findChild<QLineEdit*>("TxtToFind");
    auto* box = qobject_cast<QComboBox*>(field->parentWidget());
    ASSERT_EQ(box->count(), 2);
    EXPECT_EQ(box->itemText(0) + box->itemText(1), "ab");
    ASSERT_TRUE(QTest::qWaitForWindowActive(dialog_.get()));
    dialog_->findChild<QLineEdit*>("txtToReplace")->setFocus();
    field->deselect();
    QTest::mouseClick(field, Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return field->selectedText() == "a"; }));
}

}  // namespace
}  // namespace zentro
