#include "ui/support/dialogs.h"

#include <QAbstractButton>
#include <QApplication>
#include <QColorDialog>
#include <QDialog>
#include <QDir>
#include <QFileDialog>
#include <QFontDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QPointer>
#include <QPrintDialog>
#include <QPushButton>

#include "ui/support/workbench.h"

namespace zentro {

namespace {

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

std::optional<QString> RunFileDialog(QFileDialog& dialog, const FileChoice& choice) {
    const FocusReturn focus;
    dialog.setDefaultSuffix(choice.defaultSuffix);
    if (!choice.suggestedName.isEmpty()) dialog.selectFile(choice.suggestedName);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
    return dialog.selectedFiles().first();
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

std::optional<QString> DesktopDialogs::ChooseFileToOpen(QWidget* parent, const FileChoice& choice) {
    QFileDialog dialog(parent, choice.title, choice.folder, DesktopFilters(choice.filters));
    dialog.setFileMode(QFileDialog::ExistingFile);
    return RunFileDialog(dialog, choice);
}

std::optional<QString> DesktopDialogs::ChooseFolder(QWidget* parent, const QString& title,
                                                    const QString& present) {
    const FocusReturn focus;
    const QString folder = QFileDialog::getExistingDirectory(parent, title, present);
    if (folder.isEmpty()) return std::nullopt;
    return folder;
}

std::optional<QString> DesktopDialogs::ChooseFileToSave(QWidget* parent, const FileChoice& choice) {
    QFileDialog dialog(parent, choice.title, choice.folder, DesktopFilters(choice.filters));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    return RunFileDialog(dialog, choice);
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

bool DesktopDialogs::Run(QDialog& dialog) {
    const FocusReturn focus;
    return dialog.exec() == QDialog::Accepted;
}

}  // namespace zentro
