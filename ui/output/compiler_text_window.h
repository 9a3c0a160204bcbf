#pragma once

#include <QList>
#include <QPlainTextEdit>
#include <QWidget>

#include "ui/support/workbench.h"

namespace zentro {

/// Lines of text that the compiler made: to be read, selected and copied, each of which can be
/// activated by a double click or Enter.
class CompilerTextView : public QPlainTextEdit {
    Q_OBJECT

  public:
    explicit CompilerTextView(QWidget* parent);

    /// The selection keeps the same colours when the window has no focus.
    void SetColours(const QColor& text, const QColor& page);
    /// The font and where its tabs end, in characters from the left; beyond them every eighth.
    void SetFontAndTabs(const QFont& font, const QList<int>& tabColumns);
    void SelectLine(int line);  ///< from 0; the line is brought into view from its start

  signals:
    void LineActivated(int line);  ///< from 0

  protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

/// What the log and the listing have in common: a text in the editor's colours and font.
class CompilerTextWindow : public QWidget {
    Q_OBJECT

  public:
    void CopySelectedText();
    bool HasSelection() const { return view_->textCursor().hasSelection(); }
    /// Takes colours and font from the settings.
    virtual void SetFormColours();

  signals:
    void FormClosing();

  protected:
    /// Tab columns as CompilerTextView::SetFontAndTabs takes them.
    CompilerTextWindow(const Workbench& workbench, QList<int> tabColumns, QWidget* parent);

    CompilerTextView& View() { return *view_; }
    const CompilerTextView& View() const { return *view_; }

    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    const Workbench& workbench_;
    QList<int> tabColumns_;
    CompilerTextView* view_;
};

}  // namespace zentro
