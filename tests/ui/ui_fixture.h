#pragma once

#include <QStringList>
#include <QTemporaryDir>
#include <QTest>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <ostream>

#include "ui/support/dialogs.h"
#include "ui/support/workbench.h"

/// Failures show texts as texts.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << text.toStdString();
}

namespace zentro {

/// Answers the program's questions for a test and keeps what was shown. An answer that a test did
/// not set cancels.
class ScriptedDialogs : public Dialogs {
  public:
    QStringList shown;      ///< messages, the oldest first
    QStringList questions;  ///< yes/no questions and texts asked for
    FileChoice lastChoice;  ///< of a file dialog
    bool yes = false;
    YesNoAnswer yesNoAnswer = YesNoAnswer::Neither;
    SaveAnswer saveAnswer = SaveAnswer::Cancel;
    QStringList savesAsked;
    std::optional<QString> text;  ///< typed into the next question
    QString offered;              ///< what stood there
    std::optional<QString> fileToOpen;
    std::optional<QString> fileToSave;
    std::optional<QString> folder;
    std::optional<QColor> colour;
    std::optional<QFont> font;
    QString printToFile;  ///< empty: the print dialog is cancelled
    int copies = 1;
    QStringList waited;  ///< what was waited for
    bool keepsWaiting = true;
    std::function<bool(QDialog&)> run;  ///< acts on a dialog of our own

    void ShowMessage(QWidget* parent, const QString& text) override;
    void ShowCritical(QWidget* parent, const QString& text) override;
    bool AskYesNo(QWidget* parent, const QString& question) override;
    YesNoAnswer AskYesNoOrNeither(QWidget* parent, const QString& question) override;
    SaveAnswer AskSaveChanges(QWidget* parent, const QStringList& files) override;
    std::optional<QString> AskText(QWidget* parent, const QString& question,
                                   const QString& answer) override;
    std::optional<QString> ChooseFileToOpen(QWidget* parent, const FileChoice& choice) override;
    std::optional<QString> ChooseFileToSave(QWidget* parent, const FileChoice& choice) override;
    std::optional<QString> ChooseFolder(QWidget* parent, const QString& title,
                                        const QString& present) override;
    std::optional<QColor> ChooseColour(QWidget* parent, const QColor& present) override;
    std::optional<QFont> ChooseFont(QWidget* parent, const QFont& present) override;
    bool SetUpPrinter(QWidget* parent, QPrinter& printer) override;
    void WaitFor(QWidget* parent, const QString& path,
                 const std::function<bool()>& isDone) override;
    bool Run(QDialog& dialog) override;
};

/// A program folder of its own with default settings and the language as shipped.
class UiTest : public ::testing::Test {
  protected:
    UiTest();
    ~UiTest() override;

    std::string PathOf(const QString& name) const { return folder_.filePath(name).toStdString(); }
    QString FilePath(const QString& name) const { return folder_.filePath(name); }
    void WriteFile(const QString& name, const QByteArray& bytes);
    QByteArray ReadFile(const QString& name);

    QTemporaryDir folder_;
    ScriptedDialogs dialogs;
    InstructionConfiguration configuration;
    std::unique_ptr<SettingsStore> settings;
    std::unique_ptr<Workbench> workbench;
};

}  // namespace zentro
