#pragma once

#include <QString>
#include <QTimer>
#include <QWidget>
#include <array>
#include <functional>
#include <vector>

#include "desktop/plot_sources.h"
#include "desktop/virtual_board_host.h"
#include "ui/support/workbench.h"

class QBoxLayout;
class QHBoxLayout;
class QLabel;
class QToolButton;

namespace zentro {

class PlotList;
class PlotView;

/// How chosen variables, inputs and outputs of the virtual board go over time.
class PlotWindow : public QWidget {
    Q_OBJECT

  public:
    /// All of them outlive the window; the folder is where files are saved at first.
    PlotWindow(Workbench& workbench, VirtualBoardHost& host,
               std::function<QString()> programFolder);
    /// What is plotted stays so, for the next window.
    ~PlotWindow() override;

    QSize sizeHint() const override { return {640, 380}; }

    /// Whose variables can be chosen; null: no program is known.
    void ShowProgram(const Compilation* compilation);

  protected:
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    QToolButton* AddButton(QHBoxLayout* row, const char* name, const QString& text,
                           const QString& help);
    QHBoxLayout* MakeViewButtons();
    QHBoxLayout* MakeSaveButtons();
    void Choose();
    QColor ColourOf(const QString& name);
    void Refresh();
    void ShowValues();
    void Tell(const QString& text);
    void ShowFollowing();
    void SaveTable();
    void SavePicture();
    void Save(const QString& title, const QString& name, const QString& filters,
              const QString& suffix, const std::function<std::string()>& content);

    Workbench& workbench_;
    VirtualBoardHost& host_;
    std::function<QString()> programFolder_;
    PlotView* view_;
    PlotList* list_;
    QLabel* status_;
    QHBoxLayout* viewButtons_ = nullptr;
    QHBoxLayout* saveButtons_ = nullptr;
    QBoxLayout* buttons_ = nullptr;
    QToolButton* latest_ = nullptr;
    QToolButton* all_ = nullptr;
    QToolButton* saveTable_ = nullptr;
    QToolButton* savePicture_ = nullptr;
    QTimer told_;  ///< while something else than the time is told
    std::vector<NamedPlotSource> chosen_;
    std::array<QString, PlotCurves::kMost> coloured_;  ///< whose each colour is
};

}  // namespace zentro
