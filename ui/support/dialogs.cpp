#include "ui/support/dialogs.h"

#include <QAbstractButton>
#include <QApplication>
#include <QColorDialog>
#include <QDialog>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QPointer>
#include <QPrintDialog>
#include <QProgressDialog>
#include <QPushButton>
#include <QTimer>
#include <algorithm>

#include "ui/support/typed_path.h"
#include "ui/support/workbench.h"

namespace zentro {

namespace {

constexpr int kWaitingWidth = 360;
constexpr int kLook = 50;  // milliseconds between two looks whether a wait is over

/// While it lives, a box may be shown. Then the window that was active before is so again: a
/// desktop would choose the box's parent, behind the tool that raised the box.
class FocusReturn {
  public:
    FocusReturn() = default;
    ~FocusReturn() {
        if (window_ != nullptr && window_->isVisible()) window_->activateWindow();
    }
    FocusReturn(const FocusReturn&) = delete;
    FocusReturn& operator=(const FocusReturn&) = delete;

  private:
    QPointer<QWidget> window_ = QApplication::activeWindow();
};

void ShowBox(QWidget* parent, QMessageBox::Icon icon, const QString& text) {
    const FocusReturn focus;
    QMessageBox box(icon, kProgramTitle, text, QMessageBox::Ok, parent);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

/// Long names and texts in a question are never taken for markup.
QMessageBox::StandardButton RunQuestion(QWidget* parent, const QString& question,
                                        QMessageBox::StandardButtons buttons) {
    const FocusReturn focus;
    QMessageBox box(QMessageBox::Question, kProgramTitle, question, buttons, parent);
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(QMessageBox::Yes);
    return static_cast<QMessageBox::StandardButton>(box.exec());
}

/// Whether the folder and all that lies in it, where other drives may be mounted, can be asked for.
bool CanBeListed(const QString& folder) {
    const QFileInfoList entries = QDir(folder).entryInfoList(QDir::AllEntries);
    return std::ranges::all_of(entries, [](const QFileInfo& entry) { return entry.size() >= 0; });
}

}  // namespace

QString DesktopFilters(const QString& filters) {
    const QStringList parts = filters.split('|');
    QStringList pairs;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString name = parts[i].section('(', 0, 0).trimmed();
        const bool namesItsPattern = parts[i].contains(parts[i + 1]);
        pairs += (namesItsPattern ? name : parts[i]) + " (" + parts[i + 1] + ")";
    }
    return pairs.join(";;");
}

void DesktopDialogs::ShowMessage(QWidget* parent, const QString& text) {
    ShowBox(parent, QMessageBox::Information, text);
}

void DesktopDialogs::ShowCritical(QWidget* parent, const QString& text) {
    ShowBox(parent, QMessageBox::Critical, text);
}

bool DesktopDialogs::AskYesNo(QWidget* parent, const QString& question) {
    return RunQuestion(parent, question, QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
}

YesNoAnswer DesktopDialogs::AskYesNoOrNeither(QWidget* parent, const QString& question) {
    switch (
        RunQuestion(parent, question, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel)) {
        case QMessageBox::Yes: return YesNoAnswer::Yes;
        case QMessageBox::No: return YesNoAnswer::No;
        default: return YesNoAnswer::Neither;
    }
}

SaveAnswer DesktopDialogs::AskSaveChanges(QWidget* parent, const QStringList& files) {
    const FocusReturn focus;
    QMessageBox box(QMessageBox::Warning, kProgramTitle,
                    "These files have changes that are not saved:\n\n" + files.join('\n') +
                        "\n\nSave them before closing?",
                    QMessageBox::NoButton, parent);
    box.setTextFormat(Qt::PlainText);
    QPushButton* save = box.addButton("&Save All", QMessageBox::AcceptRole);
    QAbstractButton* discard = box.addButton("Close &Without Saving", QMessageBox::DestructiveRole);
    box.addButton(QMessageBox::Cancel);
    box.setDefaultButton(save);
    box.exec();
    if (box.clickedButton() == save) return SaveAnswer::Save;
    return box.clickedButton() == discard ? SaveAnswer::Discard : SaveAnswer::Cancel;
}

std::optional<QString> DesktopDialogs::AskText(QWidget* parent, const QString& question,
                                               const QString& answer) {
    const FocusReturn focus;
    bool accepted = false;
    const QString text = QInputDialog::getText(parent, kProgramTitle, question, QLineEdit::Normal,
                                               answer, &accepted);
    if (!accepted) return std::nullopt;
    return text;
}

/// A file dialog would hang with the folder that it begins in.
QString DesktopDialogs::AnsweringFolder(QWidget* parent, const QString& folder) {
    disk_.SetWaiter([this, parent](const QString& path, const std::function<bool()>& isDone) {
        WaitFor(parent, path, isDone);
    });
    const auto isThere = disk_.Ask(QDir(folder).filePath("."), Patience::WhileWanted,
                                   [folder] { return QFileInfo::exists(folder); });
    return isThere ? folder : QDir::homePath();
}

std::optional<QString> DesktopDialogs::RunFileDialog(std::unique_ptr<QFileDialog> dialog,
                                                     const FileChoice& choice) {
    TakeOnlyPathsThatAnswer(*dialog, disk_);
    dialog->setDefaultSuffix(choice.defaultSuffix);
    if (!choice.suggestedName.isEmpty()) dialog->selectFile(choice.suggestedName);
    const FocusReturn focus;
    std::optional<QString> chosen;
    if (dialog->exec() == QDialog::Accepted && !dialog->selectedFiles().isEmpty())
        chosen = dialog->selectedFiles().first();
    const QString folder = dialog->directory().path();
    const bool canEnd = disk_
                            .Ask(QDir(folder).filePath("."), Patience::Short,
                                 [folder] { return CanBeListed(folder); })
                            .has_value();
    if (canEnd) return chosen;
    // Its end would wait for a thread of its own that hangs.
    dialog->setParent(nullptr);
    static_cast<void>(dialog.release());
    return chosen;
}

std::optional<QString> DesktopDialogs::ChooseFileToOpen(QWidget* parent, const FileChoice& choice) {
    auto dialog = MakeFileDialog(parent, choice);
    dialog->setFileMode(QFileDialog::ExistingFile);
    return RunFileDialog(std::move(dialog), choice);
}

std::optional<QString> DesktopDialogs::ChooseFileToSave(QWidget* parent, const FileChoice& choice) {
    auto dialog = MakeFileDialog(parent, choice);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    return RunFileDialog(std::move(dialog), choice);
}

std::optional<QString> DesktopDialogs::ChooseFolder(QWidget* parent, const QString& title,
                                                    const QString& present) {
    auto dialog = MakeFileDialog(parent, {title, present, {}, {}, {}});
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    return RunFileDialog(std::move(dialog), {});
}

std::unique_ptr<QFileDialog> DesktopDialogs::MakeFileDialog(QWidget* parent,
                                                            const FileChoice& choice) {
    return std::make_unique<QFileDialog>(parent, choice.title,
                                         AnsweringFolder(parent, choice.folder),
                                         DesktopFilters(choice.filters));
}

std::optional<QColor> DesktopDialogs::ChooseColour(QWidget* parent, const QColor& present) {
    const FocusReturn focus;
    const QColor chosen = QColorDialog::getColor(present, parent);
    if (!chosen.isValid()) return std::nullopt;
    return chosen;
}

std::optional<QFont> DesktopDialogs::ChooseFont(QWidget* parent, const QFont& present) {
    const FocusReturn focus;
    bool accepted = false;
    const QFont chosen = QFontDialog::getFont(&accepted, present, parent);
    if (!accepted) return std::nullopt;
    return chosen;
}

bool DesktopDialogs::SetUpPrinter(QWidget* parent, QPrinter& printer) {
    const FocusReturn focus;
    return QPrintDialog(&printer, parent).exec() == QDialog::Accepted;
}

void DesktopDialogs::WaitFor(QWidget* parent, const QString& path,
                             const std::function<bool()>& isDone) {
    const FocusReturn focus;
    QProgressDialog dialog(
        tr("Waiting for %1...").arg(QDir::toNativeSeparators(QDir::cleanPath(path))), tr("Cancel"),
        0, 0, parent);
    dialog.setObjectName("dlgWaiting");
    dialog.setWindowTitle(kProgramTitle);
    dialog.setWindowModality(Qt::ApplicationModal);
    dialog.setMinimumDuration(0);
    dialog.setMinimumWidth(kWaitingWidth);
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &dialog, [&] {
        if (isDone()) dialog.accept();
    });
    look.start(kLook);
    dialog.exec();
}

bool DesktopDialogs::Run(QDialog& dialog) {
    const FocusReturn focus;
    return dialog.exec() == QDialog::Accepted;
}

}  // namespace zentro
