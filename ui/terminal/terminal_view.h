#pragma once

#include <QPlainTextEdit>
#include <string_view>

#include "ui/terminal/screen_text.h"

namespace zentro {

/// Shows the terminal's screen and hears keys and clicks on it. Nothing is typed into it: the board
/// echoes what it is sent.
class TerminalView : public QPlainTextEdit {
    Q_OBJECT

  public:
    explicit TerminalView(QWidget* parent);

    /// Shows a screen with its cursor. What the user has selected stays selected as long as it is
    /// there; the caret follows the cursor when nothing is.
    void ShowText(std::string_view screen, std::size_t cursor);

    void SetColours(const QColor& text, const QColor& background);

    QString SelectedText() const;
    /// Where the selection begins, or the caret stands, on the screen shown last.
    std::size_t SelectionStart() const;

    /// The pixels that columns and lines of text take with everything around them.
    QSize SizeFor(int columns, int lines) const;

  signals:
    void KeyPressed(char key);
    /// An address was double-clicked and is selected now.
    void AddressClicked();
    /// The user put the caret elsewhere.
    void CaretMoved();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

  private:
    void Apply(const ScreenEdit& edit, const QString& text);
    void PutCaret(int anchor, int position);

    ShownScreen shown_;
    bool updating_ = false;
};

}  // namespace zentro
