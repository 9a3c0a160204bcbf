#pragma once

#include <QColor>
#include <QCoreApplication>
#include <QFont>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>

#include "desktop/disk.h"

class QDialog;
class QFileDialog;
class QPrinter;
class QWidget;

namespace zentro {

/// What source files are called in every file dialog.
inline constexpr const char* kSourceFilter = "Source (Text) Files|*.txt";

/// What a file dialog begins with.
struct FileChoice {
    QString title;
    QString folder;
    QString suggestedName;  ///< may be empty
    QString filters;        ///< "Source (Text) Files|*.txt|All Files (*.*)|*.*"
    QString defaultSuffix;  ///< "txt"; empty: none
};

enum class SaveAnswer { Save, Discard, Cancel };

enum class YesNoAnswer { Yes, No, Neither };

/// Every question that stops the user goes through here, so that a test can answer it. Escape and
/// the close button of its window answer none of them: the caller then leaves everything as it is.
/// Parents may be null.
class Dialogs {
  public:
    virtual ~Dialogs() = default;

    /// A message box with an OK button, titled with the program's title.
    virtual void ShowMessage(QWidget* parent, const QString& text) = 0;
    /// The same for a failure that leaves nothing to go on with.
    virtual void ShowCritical(QWidget* parent, const QString& text) = 0;
    /// For a question where No leaves everything as it is. True for Yes.
    virtual bool AskYesNo(QWidget* parent, const QString& question) = 0;
    /// For a question where No does something too: the box has a Cancel button.
    virtual YesNoAnswer AskYesNoOrNeither(QWidget* parent, const QString& question) = 0;
    /// One question for all changed files of which the names are given.
    virtual SaveAnswer AskSaveChanges(QWidget* parent, const QStringList& files) = 0;
    virtual std::optional<QString> AskText(QWidget* parent, const QString& question,
                                           const QString& answer) = 0;
    /// The path chosen; nothing when the user cancelled.
    virtual std::optional<QString> ChooseFileToOpen(QWidget* parent, const FileChoice& choice) = 0;
    virtual std::optional<QString> ChooseFileToSave(QWidget* parent, const FileChoice& choice) = 0;
    virtual std::optional<QString> ChooseFolder(QWidget* parent, const QString& title,
                                                const QString& present) = 0;
    virtual std::optional<QColor> ChooseColour(QWidget* parent, const QColor& present) = 0;
    virtual std::optional<QFont> ChooseFont(QWidget* parent, const QFont& present) = 0;
    /// Shows the print dialog over the printer. False when the user cancelled.
    virtual bool SetUpPrinter(QWidget* parent, QPrinter& printer) = 0;
    /// Tells that a file's disk is waited for. Returns when `isDone` is so, or the user cancels.
    virtual void WaitFor(QWidget* parent, const QString& path,
                         const std::function<bool()>& isDone) = 0;
    /// Shows a dialog of our own and waits for its end. True when it was accepted.
    virtual bool Run(QDialog& dialog) = 0;
};

/// The dialogs of the desktop.
class DesktopDialogs : public Dialogs {
    Q_DECLARE_TR_FUNCTIONS(zentro::DesktopDialogs)

  public:
    explicit DesktopDialogs(Disk::Backend backend = {}) : disk_(std::move(backend)) {}

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

  private:
    QString AnsweringFolder(QWidget* parent, const QString& folder);
    std::unique_ptr<QFileDialog> MakeFileDialog(QWidget* parent, const FileChoice& choice);
    std::optional<QString> RunFileDialog(std::unique_ptr<QFileDialog> dialog,
                                         const FileChoice& choice);

    Disk disk_;
};

/// "Source (Text) Files|*.txt|All Files (*.*)|*.*" as the desktop's dialogs want it:
/// "Source (Text) Files (*.txt);;All Files (*.*)".
QString DesktopFilters(const QString& filters);

}  // namespace zentro
