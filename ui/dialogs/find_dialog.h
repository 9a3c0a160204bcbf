#pragma once

#include <QDialog>

#include "desktop/source_search.h"
#include "ui/dialogs/text_history.h"

class QCheckBox;
class QComboBox;
class QPushButton;
class QRadioButton;

namespace zentro {

/// What to find and to replace. It stays open while the user works; who listens to its signals does
/// the searching.
class FindDialog : public QDialog {
    Q_OBJECT
    Q_PROPERTY(QString TextToFind READ TextToFind WRITE SetTextToFind)

  public:
    explicit FindDialog(QWidget* parent = nullptr);

    QString TextToFind() const;
    void SetTextToFind(const QString& text);
    /// Shows the dialog in front with the text to find, or the replacement, selected.
    void ShowFind();
    void ShowReplace();

    bool eventFilter(QObject* watched, QEvent* event) override;

  signals:
    void FindText(const QString& text, zentro::FindOptions options, bool allFiles, bool newSearch);
    void ReplaceText(const QString& text, const QString& replacement, zentro::FindOptions options,
                     bool allFiles);
    void ReplaceAllText(const QString& text, const QString& replacement,
                        zentro::FindOptions options, bool allFiles);
    void FormClosing();

  private:
    QWidget* MakeTexts();
    QWidget* MakeOptions();
    QWidget* MakeButtons();
    void FindPressed();
    void ReplacePressed();
    void ReplaceAllPressed();
    void TextChanged();
    /// Puts the text to find on the clipboard and takes both texts into the histories.
    void BeginSearch(bool replaces);
    FindOptions Options() const;
    bool AllFiles() const;

    TextHistory found_;
    TextHistory replaced_;
    bool newSearch_ = true;
    QComboBox* toFind_ = nullptr;
    QComboBox* toReplace_ = nullptr;
    QCheckBox* matchCase_ = nullptr;
    QCheckBox* wholeWord_ = nullptr;
    QRadioButton* allFiles_ = nullptr;
    QPushButton* find_ = nullptr;
    QPushButton* replace_ = nullptr;
    QPushButton* replaceAll_ = nullptr;
};

}  // namespace zentro
