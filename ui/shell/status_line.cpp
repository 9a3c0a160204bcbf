#include "ui/shell/status_line.h"

#include <QLabel>
#include <QProgressBar>

#include "desktop/board_state.h"
#include "desktop/programs.h"
#include "ui/editor/source_window.h"

namespace zentro {

StatusLine::StatusLine(QWidget* parent) : MessageBar(parent), progress_(new QProgressBar(this)) {
    progress_->setObjectName("panelProgress");
    progress_->setAccessibleName(tr("Download"));
    progress_->setMaximumWidth(180);
    progress_->hide();
    addPermanentWidget(progress_);
    line_ = AddPanel("panelLine");
    changed_ = AddPanel("panelChanged");
    connection_ = AddPanel("panelConnection");
}

QLabel* StatusLine::AddPanel(const QString& name) {
    auto* panel = new QLabel(this);
    panel->setObjectName(name);
    addPermanentWidget(panel);
    return panel;
}

void StatusLine::ShowFile(const OpenFile* front) {
    changed_->setText(front == nullptr                 ? QString()
                      : front->disk == DiskState::Gone ? tr("Not on the disk")
                      : front->IsChanged()             ? tr("Changed")
                      : front->NeverSaved()            ? tr("New")
                                                       : tr("Saved"));
}

void StatusLine::ShowCaret(const SourceWindow* source) {
    line_->setText(source == nullptr ? QString() : source->DocStats());
    const QString message = source == nullptr ? QString() : source->MessageAtCursor();
    if (message == caretMessage_) return;
    caretMessage_ = message;
    ShowLasting(message);
}

void StatusLine::ShowBoard(const BoardState& board) {
    progress_->setVisible(board.IsSending());
    const ConnectionState connection = board.Connection();
    const QString port = board.PortName();
    const QString withoutSession =
        board.Kind() == BoardKind::Virtual ? tr("Virtual board") : tr("Not connected");
    connection_->setText(connection == ConnectionState::None ? withoutSession
                         : connection == ConnectionState::Connected
                             ? tr("Connected to %1").arg(port)
                             : tr("Connection to %1 lost").arg(port));
}

void StatusLine::ShowProgress(double fraction) {
    progress_->setValue(static_cast<int>(fraction * progress_->maximum()));
}

}  // namespace zentro
