#pragma once

#include <QString>
#include <Qsci/qsciscintilla.h>
#include <cstdint>
#include <optional>
#include <vector>

#include "desktop/program_report.h"

namespace zentro {

/// A line, from 1, at which a program stands, and what its mark says.
struct LineMark {
    enum class Kind : std::uint8_t {
        Lit,    ///< it is held there, or goes slowly
        Soft,   ///< it comes by at full pace
        Fault,  ///< it has failed there
    };

    int line = 0;
    QString text;
    Kind kind = Kind::Lit;

    bool operator==(const LineMark&) const = default;
};

/// A line, from 1, with a breakpoint, and what its mark says.
struct BreakpointMark {
    enum class Look : std::uint8_t { Full, Conditional, Hollow };

    int line = 0;
    QString text;
    Look look = Look::Full;

    bool operator==(const BreakpointMark&) const = default;
};

/// The marks beside the lines of an editor and below their text. They move with their lines. Each
/// kind has a shape of its own: a disc with a cross, a triangle, an arrow.
class EditorMarks {
  public:
    // The editor's margins in which breakpoints and the other marks stand.
    static constexpr int kBreakpointMargin = 0;
    static constexpr int kMargin = 2;
    static constexpr int kLampMargin = 4;  ///< beside the text, for lines that can be fixed

    /// The editor outlives the object.
    explicit EditorMarks(QsciScintilla& editor) : editor_(editor) {}

    /// Draws the marks for a colour of the page, at the density of the screen that the editor is
    /// on.
    void Redraw(const QColor& page);

    /// Marks the lines of the messages in place of those marked before; of very many messages the
    /// first ones. Messages of lines that are not there stand at the last line.
    void ShowMessages(const std::vector<LineMessage>& messages);
    void ClearMessages();

    /// Marks the line at which a program stands, in place of the one before. Lines count from 0.
    void MarkLine(int line, const QString& text, LineMark::Kind kind);
    void ClearMark();

    /// Marks the lines with breakpoints in place of those before.
    void ShowBreakpoints(const std::vector<BreakpointMark>& breakpoints);

    /// Whether the line can be fixed. Lines count from 0.
    bool HasLamp(int line) const;
    /// Whether the line bears the mark of an error, a warning or a piece of advice.
    bool HasMessage(int line) const;

    /// Writes a text below a line, until the messages change. Lines count from 0.
    void ShowBelow(int line, const QString& text);

    /// What the marks of the line say, a row each; empty without marks. Lines count from 0.
    QString TextAt(int line) const;

  private:
    struct Mark {
        int handle;
        QString text;
    };

    void AddLamp(const LineMessage& message, int line);
    Mark SetMark(int line, int marker, const QString& text);
    void Underline(int line, const LineMessage& message);

    QsciScintilla& editor_;
    std::vector<Mark> messages_;
    std::vector<Mark> lamps_;
    std::vector<Mark> breakpoints_;
    std::optional<Mark> here_;
    QColor page_;
};

}  // namespace zentro
