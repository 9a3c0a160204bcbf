#pragma once

#include <QTimer>
#include <functional>

#include "desktop/compile_log.h"
#include "model/environment.h"
#include "ui/output/compiler_text_window.h"
#include "ui/support/help_topic.h"

class QLabel;
class QProgressBar;
class QPushButton;

namespace zentro {

/// Shows the log of a compile as it grows and leads from its messages to the source lines.
class CompilerOutputWindow final : public CompilerTextWindow, public OutputSink {
    Q_OBJECT

  public:
    explicit CompilerOutputWindow(const Workbench& workbench, QWidget* parent = nullptr);

    /// The file to be compiled, for the caption. Does nothing without a name.
    void InitFile(const QString& path, const QString& fileName);
    /// The run is over: shows all of the log and what came of it, with the first error in view and
    /// selected, and ends the animation.
    void FinishCompile();
    /// Whether the program that was compiled has another text now.
    void ShowTextChanged(bool changed);
    void SetFormColours() override;

    int GetErrorCount() const { return log_.ErrorCount(); }
    /// The messages about a source line, in the order of the log.
    std::vector<PostedMessage> Messages() const { return log_.Messages(); }
    /// Selects the first message about such a line, unless one about such a line is selected; the
    /// source is not shown.
    void SelectMessage(const std::function<bool(const LineXref&)>& isWanted);
    /// The message at the caret, for the handbook.
    HelpTopic TopicAtCursor() const;

    void Write(std::string_view text, LogColour colour, const PostedMessage* message) override;
    void Clear() override;
    void Beep() override;

  public slots:
    /// Selects the next or the previous message about a source line, from the caret on, and raises
    /// ShowLineWithError for it. The first error, selected when the run was over, is the first one.
    void ShowNextMessage();
    void ShowPreviousMessage();
    /// Wants the message at the caret to be fixed, when it says for certain how.
    void FixMessage();

  signals:
    void FixWanted(const zentro::Fix& fix);
    /// The user wants to see the source line of a message.
    void ShowLineWithError(const LineXref& line);

  protected:
    /// F4 shows the next message, Shift+F4 the previous one.
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void BuildLayout();
    void ShowPending();
    void Recolour();
    QTextCharFormat FormatOf(LogColour colour) const;
    void Animate();
    void ShowLineOf(int logLine);
    void GoTo(std::optional<int> logLine);
    void ShowSummary();
    void Announce();
    const PostedMessage* MessageAtCursor() const;
    void OfferFix();

    CompileLog log_;
    QString path_;
    QString fileName_;
    QLabel* summary_;
    QPushButton* fix_;
    QProgressBar* progress_;
    QTimer animation_;
    QTimer showTimer_;
    bool hasBegun_ = false;
    bool isTextChanged_ = false;
    std::optional<int> unvisited_;  ///< the line of the log that is selected but was not shown
};

}  // namespace zentro
