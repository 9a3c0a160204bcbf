#pragma once

#include <QObject>
#include <QTimer>
#include <Qsci/qsciscintilla.h>

#include "config/command_catalogue.h"
#include "ui/editor/touched_lines.h"

namespace zentro {

/// Keeps the fold levels of the text, a block a level. The work is done in small portions while
/// nothing else happens, so that neither opening a long text nor an edit that moves the levels of
/// all lines below it is felt.
class FoldKeeper : public QObject {
    Q_OBJECT

  public:
    /// Both outlive the object.
    FoldKeeper(QsciScintilla& editor, const CommandCatalogue& commands);

    /// An edit in a line put that many lines after it, or took them away.
    void Edited(int line, int linesAdded);

    /// Does all that is left to do.
    void Finish();

  private:
    void WorkOn();
    /// One portion of lines. False when there is no more to do.
    bool DoPortion();
    int DepthBefore(int line);
    /// False when the line has that level already.
    bool SetLevel(int line, int level);

    QsciScintilla& editor_;
    const CommandCatalogue& commands_;
    TouchedLines touched_;
    QTimer rest_;
};

}  // namespace zentro
