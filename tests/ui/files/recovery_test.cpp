#include <QDir>
#include <QDirIterator>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QTreeWidget>
#include <algorithm>
#include <gmock/gmock.h>
#include <iterator>
#include <sys/mman.h>
#include <sys/stat.h>

#include "config/unfinished_write.h"
#include "desktop/recovery_store.h"
#include "tests/ui/files/child_process.h"
#include "tests/ui/ui_fixture.h"
#include "ui/dialogs/recovery_dialog.h"

namespace zentro {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class RecoveryTest : public UiTest {
  protected:
    /// A run of the program that keeps these texts of one document and crashes.
    void Crash(const QString& pathOrTitle, const QStringList& texts) {
        ASSERT_TRUE(InChild([&] {
            auto* const store = new RecoveryStore(store_);
            for (const QString& text : texts) {
                if (!store->Keep("1", pathOrTitle, text).isEmpty()) return false;
            }
            return true;
        }));
    }
    static std::vector<QString> TextsOf(const std::vector<UnsavedText>& unsaved) {
        std::vector<QString> texts;
        std::ranges::transform(unsaved, std::back_inserter(texts),
                               [](const UnsavedText& text) { return text.copy.text; });
        return texts;
    }
    static std::vector<QString> TextsOf(const std::vector<RecoveryCopy>& copies) {
        std::vector<QString> texts;
        std::ranges::transform(copies, std::back_inserter(texts), &RecoveryCopy::text);
        return texts;
    }
    QStringList CopyFiles() const {
        QStringList files;
        QDirIterator found(store_ + "/copies", QDir::Files, QDirIterator::Subdirectories);
        while (found.hasNext()) {
            files += found.next();
        }
        files.sort();
        return files;
    }

    QString store_ = FilePath("recovery");
    QString path_ = FilePath("robot.txt");
};

TEST_F(RecoveryTest, ACrashCostsNothing) {
    const QString text = QString::fromUtf8("BEGIN\r\n \xC3\xA9 \xCE\xB1\n\nEND\n");
    Crash(path_, {"first", text});
    Crash("NewFile1", {"never saved"});
    RecoveryStore store(store_);
    const std::vector<UnsavedText> unsaved = store.Unsaved();
    ASSERT_EQ(unsaved.size(), 2U);
    EXPECT_EQ(unsaved[0].copy.title, "NewFile1");
    EXPECT_EQ(unsaved[0].copy.path, "");
    EXPECT_EQ(unsaved[0].copy.text, "never saved");
    EXPECT_EQ(unsaved[1].copy.title, "robot.txt");
    EXPECT_EQ(unsaved[1].copy.path, path_);
    EXPECT_EQ(unsaved[1].copy.text, text);
    EXPECT_LT(unsaved[1].copy.time.secsTo(QDateTime::currentDateTimeUtc()), 60);
}

TEST_F(RecoveryTest, WhatWasSavedOrClosedIsNotOffered) {
    {
        RecoveryStore store(store_);
        EXPECT_EQ(store.Keep("1", path_, "saved"), "");
        EXPECT_EQ(store.Keep("2", "NewFile1", "closed"), "");
        store.Forget("1");
        store.Forget("2");
        EXPECT_EQ(TextsOf(store.Copies("1", path_)), std::vector<QString>{"saved"});
    }
    EXPECT_THAT(QDir(store_ + "/sessions").entryList(QDir::Dirs | QDir::NoDotAndDotDot), IsEmpty());
    RecoveryStore next(store_);
    EXPECT_THAT(next.Unsaved(), IsEmpty());
    EXPECT_EQ(TextsOf(next.Copies("9", path_)), std::vector<QString>{"saved"});
}

TEST_F(RecoveryTest, NothingStaysOfATextThatNeverHadAFile) {
    Crash("NewFile1", {"refused", "refused too"});
    Crash("NewFile2", {"taken back"});
    Crash("NewFile3", {"decided later"});
    RecoveryStore running(store_);
    EXPECT_EQ(running.Keep("1", "NewFile1", "of a running program"), "");
    {
        RecoveryStore store(store_);
        EXPECT_EQ(store.Keep("1", "NewFile1", "closed"), "");
        EXPECT_EQ(store.Keep("2", "NewFile2", "saved"), "");
        EXPECT_EQ(store.Keep("2", path_, "saved with a name"), "");
        store.Forget("1");
        store.Forget("2");
        std::vector<UnsavedText> unsaved = store.Unsaved();
        ASSERT_THAT(TextsOf(unsaved), ElementsAre("decided later", "taken back", "refused too"));
        EXPECT_EQ(store.Restore(unsaved[1], "3", ""), "");
        EXPECT_EQ(store.Copies("3", "NewFile2").size(), 1U);
        store.Forget("3");
        store.Discard(unsaved[2]);
    }
    const auto titles = [&] {
        QStringList found = QDir(store_ + "/copies").entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        for (QString& name : found)
            name = name.section('-', 0, 0);
        return found;
    };
    EXPECT_EQ(titles(), QStringList({"NewFile1", "NewFile3", "robot"}));
    EXPECT_EQ(TextsOf(running.Copies("1", "NewFile1")),
              std::vector<QString>{"of a running program"});
    RecoveryStore next(store_);
    const std::vector<UnsavedText> later = next.Unsaved();
    ASSERT_THAT(TextsOf(later), ElementsAre("decided later"));
    next.Discard(later[0]);
    running.Forget("1");
    EXPECT_EQ(titles(), QStringList("robot"));
}

TEST_F(RecoveryTest, WhatEarlierRunsLeftBehindIsRemoved) {
    Crash("NewFile1", {"its session is over"});
    Crash(path_, {"history"});
    QDir(store_ + "/sessions").removeRecursively();
    const QStringList left = CopyFiles();
    ASSERT_EQ(left.size(), 2);
    RecoveryStore running(store_);
    EXPECT_EQ(running.Keep("1", "NewFile1", "of a running program"), "");
    QStringList files = CopyFiles();
    files.removeIf([&](const QString& file) { return left.contains(file); });
    ASSERT_EQ(files.size(), 1);
    const auto temporaryBeside = [](const QString& file, pid_t process) {
        return QString::fromStdString(Beside(file.toStdString(), NameOfNewContent(process, 0)));
    };
    const QString crashedAtOnce = store_ + "/sessions/1-0000000a";
    QDir().mkpath(crashedAtOnce);
    const QString onlyBegun = store_ + "/copies/begun-0123456789abcdef";
    QDir().mkpath(onlyBegun);
    WriteFile("recovery/sessions/1-0000000a/NewFile1-0123456789abcdef", "");
    const QString beingWritten = temporaryBeside(files[0], getpid());
    const QStringList halfWritten{temporaryBeside(left[0], EndedProcess()),
                                  temporaryBeside(left[1], EndedProcess()),
                                  temporaryBeside(crashedAtOnce + "/x", EndedProcess()),
                                  temporaryBeside(onlyBegun + "/x", EndedProcess())};
    for (const QString& file : halfWritten + QStringList(beingWritten)) {
        WriteFile(QDir(folder_.path()).relativeFilePath(file), "half");
    }
    EXPECT_THAT(RecoveryStore(store_).Unsaved(), IsEmpty());
    EXPECT_FALSE(QFileInfo::exists(crashedAtOnce));
    EXPECT_FALSE(QFileInfo::exists(QFileInfo(left[0]).path()));
    EXPECT_FALSE(QFileInfo::exists(onlyBegun));
    EXPECT_EQ(CopyFiles(), QStringList({files[0], left[1]}));
    for (const QString& file : halfWritten)
        EXPECT_FALSE(QFileInfo::exists(file)) << file.toStdString();
    EXPECT_TRUE(QFileInfo::exists(beingWritten));
}

TEST_F(RecoveryTest, OnlyTheUserCanReadTheCopies) {
    const auto openToOthers = [&] {
        QStringList open;
        QDirIterator entry(store_ + "/..", {"recovery"}, QDir::Dirs);
        QDirIterator inside(store_, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                            QDirIterator::Subdirectories);
        for (QDirIterator* found : {&entry, &inside}) {
            while (found->hasNext()) {
                const QFileInfo file(found->next());
                const int rights = static_cast<int>(file.permissions()) & 0x777;
                if (rights != (file.isDir() ? 0x700 : 0x600)) open += file.filePath();
            }
        }
        return open;
    };
    const mode_t usual = umask(022);
    Crash(path_, {"text"});
    Crash("NewFile1", {"text"});
    EXPECT_EQ(openToOthers(), QStringList());
    // As an earlier version left them.
    for (const QString& file : CopyFiles())
        ASSERT_EQ(chmod(file.toUtf8().constData(), 0644), 0);
    for (const char* name : {"/copies", "/sessions", ""})
        ASSERT_EQ(chmod((store_ + name).toUtf8().constData(), 0755), 0);
    ASSERT_EQ(openToOthers().size(), 5);
    EXPECT_EQ(RecoveryStore(store_).Unsaved().size(), 2U);
    EXPECT_EQ(openToOthers(), QStringList());
    umask(usual);
}

TEST_F(RecoveryTest, EqualTextsMakeOneCopyAndAreUnsavedAgain) {
    {
        RecoveryStore store(store_);
        for (const char* text : {"a", "a", "b", "b", "a"}) {
            EXPECT_EQ(store.Keep("1", path_, text), "");
        }
        EXPECT_THAT(TextsOf(store.Copies("1", path_)), ElementsAre("a", "b", "a"));
        store.Forget("1");
        EXPECT_EQ(store.Keep("1", path_, "a"), "");
        EXPECT_EQ(CopyFiles().size(), 3);
    }
    EXPECT_THAT(TextsOf(RecoveryStore(store_).Unsaved()), ElementsAre("a"));
}

TEST_F(RecoveryTest, ADocumentThatGetsAnotherNameIsOfferedOnce) {
    {
        RecoveryStore store(store_);
        EXPECT_EQ(store.Keep("1", "NewFile1", "a"), "");
        EXPECT_EQ(store.Keep("2", "NewFile1", "another NewFile1"), "");
        EXPECT_EQ(store.Keep("1", path_, "b"), "");
    }
    EXPECT_THAT(TextsOf(RecoveryStore(store_).Unsaved()),
                ::testing::UnorderedElementsAre("b", "another NewFile1"));
}

TEST_F(RecoveryTest, TheLastFiftyCopiesStay) {
    Crash(path_, {"left by a crash"});
    RecoveryStore store(store_);
    for (int i = 1; i <= 60; ++i) {
        EXPECT_EQ(store.Keep("1", path_, QString::number(i)), "");
    }
    // The text that is unsaved elsewhere stays beside them.
    const std::vector<QString> texts = TextsOf(store.Copies("1", path_));
    ASSERT_EQ(texts.size(), 51U);
    EXPECT_EQ(texts[0], "60");
    EXPECT_EQ(texts[49], "11");
    const std::vector<UnsavedText> unsaved = store.Unsaved();
    EXPECT_THAT(TextsOf(unsaved), ElementsAre("left by a crash"));
    store.Discard(unsaved[0]);
    EXPECT_EQ(store.Keep("1", path_, "61"), "");
    EXPECT_EQ(CopyFiles().size(), 50);
}

TEST_F(RecoveryTest, RunningProgramsKeepTheirTexts) {
    auto first = std::make_unique<RecoveryStore>(store_);
    auto second = std::make_unique<RecoveryStore>(store_);
    RecoveryStore third(store_);
    EXPECT_EQ(first->Keep("1", path_, "of the first"), "");
    EXPECT_EQ(second->Keep("1", path_, "of the second"), "");
    EXPECT_THAT(third.Unsaved(), IsEmpty());
    first.reset();
    EXPECT_THAT(TextsOf(second->Unsaved()), ElementsAre("of the first"));
    EXPECT_THAT(third.Unsaved(), IsEmpty());
    second.reset();
    EXPECT_THAT(TextsOf(third.Unsaved()),
                ::testing::UnorderedElementsAre("of the second", "of the first"));
}

TEST_F(RecoveryTest, TakingATextBackCanBeUndone) {
    Crash(path_, {"lost"});
    {
        RecoveryStore store(store_);
        const UnsavedText unsaved = store.Unsaved().at(0);
        EXPECT_EQ(store.Restore(unsaved, "5", "present"), "");
        EXPECT_THAT(TextsOf(store.Copies("5", path_)), ElementsAre("lost", "present", "lost"));
        EXPECT_THAT(store.Unsaved(), IsEmpty());
    }
    // It is unsaved still, in the run that took it over.
    RecoveryStore next(store_);
    const std::vector<UnsavedText> again = next.Unsaved();
    EXPECT_THAT(TextsOf(again), ElementsAre("lost"));
    next.Discard(again[0]);
    EXPECT_THAT(next.Unsaved(), IsEmpty());
}

TEST_F(RecoveryTest, DamagedAndForeignFilesDoNoHarm) {
    Crash(path_, {"whole", "damaged"});
    const QStringList copies = CopyFiles();
    ASSERT_EQ(copies.size(), 2);
    ASSERT_TRUE(QFile::resize(copies[1], QFileInfo(copies[1]).size() - 1));
    const QString session = store_ + "/sessions/" + QDir(store_ + "/sessions").entryList()[2];
    const QStringList foreign{"recovery/sessions/notes.txt", "recovery/copies/notes.txt",
                              "recovery/sessions/1-0000000a/strange",
                              QDir(folder_.path()).relativeFilePath(session + "/strange"),
                              QDir(folder_.path()).relativeFilePath(copies[0] + "~")};
    QDir(store_ + "/sessions").mkdir("1-0000000a");
    QDir(store_ + "/sessions").mkdir("foreign");
    for (const QString& name : foreign) {
        WriteFile(name, "{\"bytes\":");
    }
    {
        RecoveryStore store(store_);
        const std::vector<UnsavedText> unsaved = store.Unsaved();
        EXPECT_THAT(TextsOf(unsaved), ElementsAre("whole"));
        EXPECT_EQ(store.Restore(unsaved.at(0), "1", ""), "");
    }
    for (const QString& name : foreign) {
        EXPECT_EQ(ReadFile(name), "{\"bytes\":") << name.toStdString();
    }
    EXPECT_TRUE(QFileInfo::exists(store_ + "/sessions/foreign"));
}

/// What a power cut leaves of a file whose bytes were still on their way to the disk.
TEST_F(RecoveryTest, OfSpoiltCopiesTheNewestWholeOneIsOffered) {
    const std::vector<std::function<QByteArray(QByteArray)>> spoil{
        [](const QByteArray&) { return QByteArray(); },
        [](const QByteArray& whole) { return whole.left(whole.size() / 2); },
        [](const QByteArray& whole) { return QByteArray(whole.size(), '\0'); },
        [](const QByteArray& whole) { return whole.left(whole.size() - 4) + QByteArray(4, '\0'); },
        [](const QByteArray& whole) { return whole + '\0'; },
    };
    Crash(path_, {"whole"});
    Crash("NewFile1", {"whole too"});
    for (std::size_t i = 0; i < spoil.size(); ++i) {
        for (const QString& file : {CopyFiles().first(), CopyFiles().last()}) {
            // A newer copy of the same text by the same run.
            QString newer = file;
            newer.replace(QRegularExpression("Z-\\d{6}"), QString("Z-%1").arg(i + 100, 6));
            newer.replace(QRegularExpression("/\\d{8}T"), "/29990101T").replace(' ', '0');
            const QByteArray whole = ReadFile(QDir(folder_.path()).relativeFilePath(file));
            WriteFile(QDir(folder_.path()).relativeFilePath(newer), spoil[i](whole));
        }
    }
    ASSERT_EQ(CopyFiles().size(), 2 + 2 * static_cast<int>(spoil.size()));
    {
        RecoveryStore store(store_);
        EXPECT_THAT(TextsOf(store.Unsaved()),
                    ::testing::UnorderedElementsAre("whole", "whole too"));
        // Not even the history of another run pushes it out.
        for (int i = 0; i < kMostCopies + 5; ++i) {
            EXPECT_EQ(store.Keep("1", path_, QString::number(i)), "");
        }
        store.Forget("1");
    }
    EXPECT_THAT(TextsOf(RecoveryStore(store_).Unsaved()),
                ::testing::UnorderedElementsAre("whole", "whole too"));
    // Of a text without a file nothing stays, spoilt or whole, once nobody can ask for it.
    QDir(store_ + "/sessions").removeRecursively();
    EXPECT_THAT(RecoveryStore(store_).Unsaved(), IsEmpty());
    EXPECT_EQ(QDir(store_ + "/copies").entryList({"NewFile1-*"}, QDir::Dirs), QStringList());
}

TEST_F(RecoveryTest, ACopyOfAnEarlierVersionHasNoChecksum) {
    Crash(path_, {"old"});
    const QString copy = QDir(folder_.path()).relativeFilePath(CopyFiles().at(0));
    WriteFile(copy, R"({"bytes":5,"path":")" + path_.toUtf8() + R"(","title":"robot.txt"})" + "\n" +
                        "older");
    EXPECT_THAT(TextsOf(RecoveryStore(store_).Unsaved()), ElementsAre("older"));
}

TEST_F(RecoveryTest, AFullDiskIsToldAndCostsNoCopy) {
    Crash(path_, {"kept"});
    EXPECT_TRUE(InChild([&] {
        RecoveryStore store(store_);
        if (!store.Keep("1", path_, "kept too").isEmpty()) return false;
        LimitFileSize(20'000);
        const QString problem = store.Keep("1", path_, QString(100'000, 'x'));
        return problem ==
                   "Could not keep a recovery copy. System returned the following error: "
                   "File too large" &&
               store.Keep("1", path_, "small again").isEmpty();
    }));
    EXPECT_THAT(TextsOf(RecoveryStore(store_).Copies("1", path_)),
                ElementsAre("small again", "kept too", "kept"));

    WriteFile("file", "");
    RecoveryStore nowhere(FilePath("file/recovery"));
    EXPECT_TRUE(nowhere.Keep("1", path_, "x").startsWith("Could not keep a recovery copy."));
    EXPECT_THAT(nowhere.Unsaved(), IsEmpty());
}

TEST_F(RecoveryTest, AKillAmongManyCopiesCostsAtMostTheOneInTheMaking) {
    // Shared with the child: how many copies were made.
    auto* const made = static_cast<volatile int*>(
        mmap(nullptr, sizeof(int), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    ASSERT_NE(made, MAP_FAILED);
    std::mt19937 random(1);
    for (int round = 0; round < 30; ++round) {
        *made = 0;
        std::unique_ptr<RecoveryStore> child;
        KillWhileWorking(
            [&](int i) {
                if (i == 0) child = std::make_unique<RecoveryStore>(store_);
                const QString text = QString::number(i + 1) + QString(50'000, 'x') + '!';
                if (child->Keep("1", path_, text).isEmpty()) *made = i + 1;
            },
            random);
        RecoveryStore store(store_);
        const std::vector<UnsavedText> unsaved = store.Unsaved();
        const int lastMade = *made;
        if (lastMade > 0) {
            ASSERT_EQ(unsaved.size(), 1U);
        }
        for (const UnsavedText& text : unsaved) {
            EXPECT_TRUE(text.copy.text.endsWith("xx!"));
            EXPECT_THAT(text.copy.text.section('x', 0, 0).toInt(),
                        ::testing::AnyOf(lastMade, lastMade + 1));
            store.Discard(text);
        }
    }
}

TEST_F(RecoveryTest, TheDialogShowsWhatDiffersAndTakesBack) {
    WriteFile("robot.txt", "one\ntwo\nthree\n");
    Crash(path_, {"one\n2\nthree\nfour"});
    Crash("NewFile1", {"new"});
    Crash("NewFile2", {"unwanted"});
    RecoveryStore store(store_);
    Disk disk;
    RecoveryDialog dialog(store.Unsaved(), disk);
    QStringList taken;
    QObject::connect(&dialog, &RecoveryDialog::RecoverChosen,
                     [&](const UnsavedText& text) { taken += "recover " + text.copy.title; });
    QObject::connect(&dialog, &RecoveryDialog::DiscardChosen,
                     [&](const UnsavedText& text) { taken += "discard " + text.copy.title; });
    dialog.show();
    auto* const list = dialog.findChild<QTreeWidget*>("UnsavedList");
    auto* const difference = dialog.findChild<QPlainTextEdit*>("DifferenceView");
    auto* const recover = dialog.findChild<QPushButton*>("BtnRecover");
    ASSERT_EQ(list->topLevelItemCount(), 3);
    EXPECT_EQ(difference->toPlainText(), "+ unwanted");

    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualItemRect(list->topLevelItem(0)).center());
    QTest::mouseClick(dialog.findChild<QPushButton*>("BtnDiscard"), Qt::LeftButton);
    EXPECT_EQ(taken, QStringList{"discard NewFile2"});

    list->setFocus();
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_EQ(difference->toPlainText(), "  one\n- two\n+ 2\n  three\n+ four");
    list->clearSelection();
    EXPECT_FALSE(recover->isEnabled());
    list->selectAll();
    QTest::mouseClick(recover, Qt::LeftButton);
    EXPECT_EQ(taken, (QStringList{"discard NewFile2", "recover robot.txt", "recover NewFile1"}));
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(RecoveryTest, TheDialogTakesBackOrDiscardsAllAndOneSeesWhatTheyAre) {
    const QString longLine(100, 'x');
    for (const char* button : {"BtnRecoverAll", "BtnDiscardAll", "BtnLater"}) {
        Crash("NewFile1", {"\n\r\n\t Count =\t1 \r\nCount = 2\n"});
        Crash("NewFile2", {longLine});
        Crash("NewFile3", {" \n"});
        RecoveryStore store(store_);
        Disk disk;
        RecoveryDialog dialog(store.Unsaved(), disk);
        QStringList recovered;
        QStringList discarded;
        QObject::connect(&dialog, &RecoveryDialog::RecoverChosen,
                         [&](const UnsavedText& text) { recovered += text.copy.title; });
        QObject::connect(&dialog, &RecoveryDialog::DiscardChosen, [&](const UnsavedText& text) {
            discarded += text.copy.title;
            store.Discard(text);
        });
        dialog.show();
        const auto* list = dialog.findChild<QTreeWidget*>("UnsavedList");
        ASSERT_EQ(list->topLevelItemCount(), 3);
        EXPECT_EQ(list->selectedItems().size(), 1);
        for (int i = 0; i < 3; ++i)
            EXPECT_NE(list->topLevelItem(i)->text(1), "");
        EXPECT_EQ(list->topLevelItem(0)->text(2), "");
        EXPECT_EQ(list->topLevelItem(1)->text(2), longLine.left(60) + "…");
        EXPECT_EQ(list->topLevelItem(2)->text(2), "Count = 1");
        QTest::mouseClick(dialog.findChild<QPushButton*>(button), Qt::LeftButton);
        EXPECT_FALSE(dialog.isVisible());
        const QStringList all{"NewFile3", "NewFile2", "NewFile1"};
        const QStringList upwards{all.rbegin(), all.rend()};
        EXPECT_EQ(recovered, QString(button) == "BtnRecoverAll" ? upwards : QStringList());
        EXPECT_EQ(discarded, QString(button) == "BtnDiscardAll" ? all : QStringList());
        for (const UnsavedText& text : store.Unsaved())
            store.Discard(text);
    }
}

TEST_F(RecoveryTest, OfEarlierCopiesOneIsTakenBack) {
    RecoveryStore store(store_);
    std::vector<UnsavedText> texts;
    for (const char* text : {"1", "2", "3"}) {
        EXPECT_EQ(store.Keep("1", path_, text), "");
    }
    for (const RecoveryCopy& copy : store.Copies("1", path_)) {
        texts.push_back({copy, {}});
    }
    Disk disk;
    RecoveryDialog dialog(std::move(texts), disk);
    dialog.OfferOnlyRecovery();
    QStringList taken;
    QObject::connect(&dialog, &RecoveryDialog::RecoverChosen,
                     [&](const UnsavedText& text) { taken += text.copy.text; });
    dialog.show();
    EXPECT_FALSE(dialog.findChild<QPushButton*>("BtnDiscard")->isVisible());
    QTest::keyClick(dialog.findChild<QTreeWidget*>("UnsavedList"), Qt::Key_Down);
    QTest::mouseClick(dialog.findChild<QPushButton*>("BtnRecover"), Qt::LeftButton);
    EXPECT_EQ(taken, QStringList{"2"});
    EXPECT_FALSE(dialog.isVisible());
}

}  // namespace
}  // namespace zentro
