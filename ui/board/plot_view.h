#pragma once

#include <QByteArray>
#include <QStringList>
#include <QWidget>
#include <cstdint>
#include <optional>
#include <vector>

#include "desktop/plot_curves.h"

class QCPAxisRect;
class QCPGraph;
class QCPItemStraightLine;
class QCPLegend;
class QCPRange;
class QCustomPlot;
class QLabel;

namespace zentro {

/// A curve as it is drawn.
struct CurveLook {
    QString name;
    QColor colour;
    bool isDashed = false;
};

/// The picture of the curves, over seconds, with a cursor line that follows the mouse or the arrow
/// keys. Wheel and drag change which part of the time is seen; the values always fit in.
class PlotView : public QWidget {
    Q_OBJECT

  public:
    /// The curves outlive the view.
    PlotView(const PlotCurves& curves, QWidget* parent);
    ~PlotView() override;

    /// Which part of the time stays in sight while it goes on.
    enum class Following : std::uint8_t { Latest, All, Nothing };

    /// How the curves are drawn, in their order.
    void SetLooks(std::vector<CurveLook> looks);
    /// Each curve gets a strip of its own.
    void SetSeparate(bool separate);
    void Follow(Following following);
    Following Followed() const { return following_; }
    /// Shows less of the time, or above 1 more of it.
    void Zoom(double factor);

    /// Draws the curves as they are now. Queued, so that many calls cost one picture.
    void Refresh();

    /// The tick of the cursor; nothing: it is not shown.
    std::optional<std::uint32_t> Cursor() const { return cursor_; }
    /// The seconds that are seen.
    double From() const { return from_; }
    double To() const { return to_; }

    /// The picture with the names of the curves as a PNG file, twice as fine as on a screen of
    /// usual density.
    QByteArray Png();

    QSize minimumSizeHint() const override { return {160, 90}; }

  signals:
    void CursorMoved();
    void FollowingChanged();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    /// An area with axes: of all curves, or of one.
    struct Strip {
        QCPAxisRect* area = nullptr;
        QCPItemStraightLine* cursor = nullptr;
        std::vector<std::size_t> curves;
    };

    void Build();
    void MakeStrip(int row, std::vector<std::size_t> curves, bool isLast);
    QCPLegend* MakeLegend(int width);
    void TakeColours();
    void TakeRange(const QCPRange& range);
    void SetRange(double from, double to);
    void FollowTime();
    void Fill();
    void FillStrip(const Strip& strip);
    void PlaceCursor();
    void SetCursor(std::optional<std::uint32_t> tick);
    void MoveCursor(int steps);

    const PlotCurves& curves_;
    QCustomPlot* plot_;
    QLabel* hint_;
    std::vector<CurveLook> looks_;
    std::vector<QCPGraph*> graphs_;
    std::vector<Strip> strips_;
    bool isSeparate_ = false;
    bool isSettingRange_ = false;
    Following following_ = Following::Latest;
    double from_ = 0;
    double to_ = 0;
    double span_ = 0;  ///< of the latest that is seen
    std::optional<std::uint32_t> cursor_;
};

}  // namespace zentro
