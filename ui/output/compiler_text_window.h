#pragma once

#include <QWidget>

#include "ui/output/compiler_text_view.h"
#include "ui/support/window_place.h"
#include "ui/support/workbench.h"

namespace zentro {

/// What the log and the listing have in common: a text in the editor's colours and font, and a
/// place that is remembered.
class CompilerTextWindow : public QWidget {
    Q_OBJECT

  public:
    void CopySelectedText();
    bool HasSelection() const { return view_->textCursor().hasSelection(); }
    /// Puts the window, once it stands in its frame, where its settings say. From then on its place
    /// is kept when it closes.
    void PositionForm();
    /// Takes colours and font from the settings.
    virtual void SetFormColours();

  signals:
    void FormClosing();

  protected:
    /// Tab columns as CompilerTextView::SetFontAndTabs takes them.
    CompilerTextWindow(const Workbench& workbench, const PlaceSettings& place,
                       QList<int> tabColumns, QWidget* parent);

    CompilerTextView& View() { return *view_; }
    const CompilerTextView& View() const { return *view_; }

    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    const Workbench& workbench_;
    PlaceSettings place_;
    QList<int> tabColumns_;
    CompilerTextView* view_;
    bool isPlaced_ = false;
};

}  // namespace zentro
