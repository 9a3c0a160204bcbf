#pragma once

#include <QString>
#include <Qsci/qsciscintilla.h>
#include <optional>
#include <vector>

#include "desktop/program_report.h"

namespace zentro {

/// The marks beside the lines of an editor and below their text. They move with their lines. Each
/// kind has a shape of its own: a disc with a cross, a triangle, an arrow.
class EditorMarks {
  public:
    static constexpr int kMargin = 1;  ///< the editor's margin in which the marks stand

    /// The editor outlives the object.
    explicit EditorMarks(QsciScintilla& editor) : editor_(editor) {}

    /// Draws the marks for a colour of the page, at the density of the screen that the editor is
    /// on.
    void Redraw(const QColor& page);

    /// Marks the lines of the messages in place of those marked before; of very many messages the
    /// first ones. Messages of lines that are not there stand at the last line.
    void ShowMessages(const std::vector<LineMessage>& messages);
    void ClearMessages();

    /// Marks the line at which a program stands. Lines count from 0.
    void MarkLine(int line, const QString& text);
    void ClearMark();

    /// Writes a text below a line, until the messages change. Lines count from 0.
    void ShowBelow(int line, const QString& text);

    /// What the marks of the line say, a row each; empty without marks. Lines count from 0.
    QString TextAt(int line) const;

  private:
    struct Mark {
        int handle;
        QString text;
    };

    Mark SetMark(int line, int marker, const QString& text);
    void Underline(int line, Severity severity);

    QsciScintilla& editor_;
    std::vector<Mark> messages_;
    std::optional<Mark> here_;
    QColor page_;
};

}  // namespace zentro
