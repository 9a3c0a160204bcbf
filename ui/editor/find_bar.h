#pragma once

#include <QWidget>

#include "desktop/find_options.h"
#include "ui/editor/soft_marks.h"

class QCheckBox;
class QLabel;
class QLineEdit;

namespace zentro {

class SourceEditor;

/// A narrow bar under an editor that finds while one types: all matches are marked and counted, one
/// is selected.
class FindBar : public QWidget {
    Q_OBJECT

  public:
    /// The editor outlives the bar.
    FindBar(SourceEditor& editor, QWidget* parent);

    /// Shows the bar, with the selected text to find when it is of one line, and takes the focus.
    void Open();
    void Close();

  signals:
    /// That is what was looked for last; Find Next goes on with it.
    void Searched(const QString& text, zentro::FindOptions options);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void BuildLayout();
    bool HandleKey(int key, Qt::KeyboardModifiers modifiers);
    void Retype();
    void Step(bool forward);
    void Look();
    void Select(std::size_t match);
    void ShowMatches();
    QString CountText(std::ptrdiff_t number) const;
    void ShowCount(std::ptrdiff_t number);
    FindOptions Options() const;

    SourceEditor& editor_;
    QLineEdit* text_;
    QCheckBox* matchCase_;
    QLabel* count_;
    std::vector<TextRange> matches_;
    long origin_ = 0;  ///< where the caret was when the bar was opened
};

}  // namespace zentro
