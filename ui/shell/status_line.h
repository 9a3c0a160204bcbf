#pragma once

#include "ui/support/message_bar.h"

class QLabel;
class QProgressBar;

namespace zentro {

class BoardState;
struct OpenFile;
class SourceWindow;

/// The line below the windows: what has happened, where the caret is, whether the file in front is
/// saved, and what the program is connected to.
class StatusLine : public MessageBar {
    Q_OBJECT

  public:
    explicit StatusLine(QWidget* parent);

    /// Null: no file is open.
    void ShowFile(const OpenFile* front);
    /// What is wrong with the caret's line can be read without a mouse. Null: no file is open.
    void ShowCaret(const SourceWindow* source);
    void ShowBoard(const BoardState& board);
    /// Of a download, from 0 to 1.
    void ShowProgress(double fraction);

  private:
    QLabel* AddPanel(const QString& name);

    QProgressBar* progress_;
    QLabel* line_;
    QLabel* changed_;
    QLabel* connection_;
    QString caretMessage_;
};

}  // namespace zentro
