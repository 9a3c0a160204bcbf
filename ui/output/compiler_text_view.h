#pragma once

#include <QList>
#include <QPlainTextEdit>

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

}  // namespace zentro
