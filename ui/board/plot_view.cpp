#include "ui/board/plot_view.h"

#include <QBuffer>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QScopedValueRollback>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <limits>
#include <qcustomplot.h>
#include <utility>

#include "ui/support/colours.h"

namespace zentro {

namespace {

constexpr double kTicks = kTicksPerSecond;
constexpr double kFirstSpan = 20;  // seconds
constexpr double kLeastSpan = 0.1;
constexpr double kMostSpan = PlotCurves::kKeptTicks / kTicks;
constexpr int kRoomBesideName = 60;  // pixels, in the legend
constexpr int kFocusFrame = 2;
constexpr QSize kLeastPicture{800, 450};
constexpr double kPictureScale = 2;
constexpr double kPan = 0.2;  // of what is seen
constexpr int kStepsAcross = 100;

/// The colour stands out a little from what lies behind it.
QPen GridPen(const QPalette& palette) {
    const QColor text = palette.color(QPalette::Text);
    return {Mix(text, palette.color(QPalette::Base), 18), 0, Qt::DotLine};
}

}  // namespace

PlotView::PlotView(const PlotCurves& curves, QWidget* parent)
    : QWidget(parent),
      curves_(curves),
      plot_(new QCustomPlot(this)),
      hint_(new QLabel(tr("Tick what you want to see:\nit is drawn from then on."), this)),
      to_(kFirstSpan),
      span_(kFirstSpan) {
    setObjectName("PlotView");
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("Plot"));
    hint_->setAlignment(Qt::AlignCenter);
    hint_->setWordWrap(true);
    hint_->setAttribute(Qt::WA_TransparentForMouseEvents);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kFocusFrame, kFocusFrame, kFocusFrame, kFocusFrame);
    layout->addWidget(plot_);
    plot_->setObjectName("PlotPicture");
    plot_->setFocusPolicy(Qt::NoFocus);
    plot_->setAutoAddPlottableToLegend(false);
    plot_->setInteractions(QCP::iRangeDrag | QCP::iRangeZoom);
    plot_->setNotAntialiasedElements(QCP::aeAll);
    plot_->setPlottingHints(QCP::phFastPolylines);
    connect(plot_, &QCustomPlot::mouseMove, this, [this](const QMouseEvent* event) {
        if (strips_.empty() || event->buttons() != Qt::NoButton) return;
        const double seconds =
            strips_.front().area->axis(QCPAxis::atBottom)->pixelToCoord(event->pos().x());
        const double tick =
            std::clamp<double>(std::round(seconds * kTicks), curves_.First(), curves_.Now());
        SetCursor(static_cast<std::uint32_t>(tick));
    });
    connect(plot_, &QCustomPlot::mousePress, this, [this] { setFocus(Qt::MouseFocusReason); });
    Build();
}

PlotView::~PlotView() = default;

void PlotView::SetLooks(std::vector<CurveLook> looks) {
    looks_ = std::move(looks);
    Build();
}

void PlotView::SetSeparate(bool separate) {
    isSeparate_ = separate;
    Build();
}

void PlotView::Build() {
    plot_->clearItems();
    plot_->clearPlottables();
    plot_->plotLayout()->clear();
    graphs_.assign(looks_.size(), nullptr);
    strips_.clear();
    std::vector<std::size_t> all;
    for (std::size_t index = 0; index < looks_.size(); ++index) {
        all.push_back(index);
    }
    if (isSeparate_ && !all.empty()) {
        for (const std::size_t index : all) {
            MakeStrip(static_cast<int>(index), {index}, index + 1 == all.size());
        }
    } else {
        MakeStrip(0, all, true);
    }
    auto* margins = new QCPMarginGroup(plot_);
    for (const Strip& strip : strips_) {
        strip.area->setMarginGroup(QCP::msLeft | QCP::msRight, margins);
    }
    hint_->setVisible(looks_.empty());
    TakeColours();
    Refresh();
}

/// Above the strips, in as many columns as there is room for.
QCPLegend* PlotView::MakeLegend(int width) {
    auto* legend = new QCPLegend;
    plot_->plotLayout()->insertRow(0);
    plot_->plotLayout()->addElement(0, 0, legend);
    plot_->plotLayout()->setRowStretchFactor(0, 0.001);
    legend->setLayer("legend");
    legend->setBrush(Qt::NoBrush);
    legend->setBorderPen(Qt::NoPen);
    legend->setFillOrder(QCPLayoutGrid::foColumnsFirst);
    int widest = 1;
    for (const CurveLook& look : looks_) {
        widest = std::max(widest, fontMetrics().horizontalAdvance(look.name));
    }
    legend->setWrap(std::max(1, width / (widest + kRoomBesideName)));
    for (QCPGraph* graph : graphs_) {
        auto* item = new QCPPlottableLegendItem(legend, graph);
        item->setFont(font());
        item->setTextColor(palette().color(QPalette::Text));
        legend->addItem(item);
    }
    return legend;
}

void PlotView::MakeStrip(int row, std::vector<std::size_t> curves, bool isLast) {
    Strip strip;
    strip.area = new QCPAxisRect(plot_);
    plot_->plotLayout()->addElement(row, 0, strip.area);
    strip.area->setRangeDrag(Qt::Horizontal);
    strip.area->setRangeZoom(Qt::Horizontal);
    strip.area->setMinimumMargins({4, 4, 8, 0});
    for (QCPAxis* axis : strip.area->axes()) {
        axis->setLayer("axes");
        axis->grid()->setLayer("grid");
    }
    QCPAxis* const time = strip.area->axis(QCPAxis::atBottom);
    time->setTickLabels(isLast);
    if (isLast) time->setLabel(tr("Seconds since the start"));
    if (isSeparate_) strip.area->axis(QCPAxis::atLeft)->ticker()->setTickCount(2);
    connect(time, qOverload<const QCPRange&>(&QCPAxis::rangeChanged), this, &PlotView::TakeRange);
    for (const std::size_t index : curves) {
        auto* graph = new QCPGraph(time, strip.area->axis(QCPAxis::atLeft));
        graph->setLineStyle(QCPGraph::lsStepLeft);
        graph->setAdaptiveSampling(false);  // the points are few already
        graph->setName(looks_[index].name);
        graphs_[index] = graph;
    }
    strip.cursor = new QCPItemStraightLine(plot_);
    strip.cursor->setClipAxisRect(strip.area);
    for (QCPItemPosition* point : strip.cursor->positions()) {
        point->setAxisRect(strip.area);
        point->setAxes(time, strip.area->axis(QCPAxis::atLeft));
        point->setTypeY(QCPItemPosition::ptAxisRectRatio);
    }
    strip.curves = std::move(curves);
    strips_.push_back(std::move(strip));
}

void PlotView::TakeColours() {
    const QPalette& colours = palette();
    const QColor text = colours.color(QPalette::Text);
    plot_->setBackground(colours.color(QPalette::Base));
    for (const Strip& strip : strips_) {
        for (QCPAxis* axis : strip.area->axes()) {
            axis->setBasePen(QPen(text));
            axis->setTickPen(QPen(text));
            axis->setSubTickPen(QPen(text));
            axis->setTickLabelColor(text);
            axis->setLabelColor(text);
            axis->setTickLabelFont(font());
            axis->setLabelFont(font());
            axis->grid()->setPen(GridPen(colours));
            axis->grid()->setZeroLinePen(GridPen(colours));
        }
        strip.cursor->setPen(QPen(text, 0, Qt::DashLine));
    }
    for (std::size_t index = 0; index < graphs_.size(); ++index) {
        QPen pen(looks_[index].colour, 2);
        if (looks_[index].isDashed) pen.setStyle(Qt::DashLine);
        graphs_[index]->setPen(pen);
    }
    QPalette hint = hint_->palette();
    hint.setColor(QPalette::WindowText, text);
    hint_->setPalette(hint);
}

/// Somebody has dragged the time or turned the wheel over it.
void PlotView::TakeRange(const QCPRange& range) {
    if (isSettingRange_) return;
    SetRange(range.lower, range.upper);
    Follow(Following::Nothing);
}

/// A piece of the time that there is, with a little room behind it.
void PlotView::SetRange(double from, double to) {
    const double end = std::max(curves_.Now() / kTicks, kFirstSpan);
    const double begin = curves_.First() / kTicks;
    const double span = std::clamp(to - from, kLeastSpan, kMostSpan);
    const double middle = (from + to) / 2;
    from_ = std::max(begin, std::min(middle - span / 2, end - span / 2));
    to_ = from_ + span;
}

void PlotView::Follow(Following following) {
    if (following == Following::Latest && following_ != following)
        span_ = std::min(to_ - from_, kFirstSpan);
    if (std::exchange(following_, following) != following) emit FollowingChanged();
    Refresh();
}

void PlotView::Zoom(double factor) {
    const double span = std::clamp((to_ - from_) * factor, kLeastSpan, kMostSpan);
    if (following_ == Following::Latest) {
        span_ = span;
        return Refresh();
    }
    const double middle = cursor_ && *cursor_ / kTicks > from_ && *cursor_ / kTicks < to_
                              ? *cursor_ / kTicks
                              : (from_ + to_) / 2;
    const double before = (middle - from_) / (to_ - from_);
    SetRange(middle - span * before, middle + span * (1 - before));
    Follow(Following::Nothing);
}

void PlotView::FollowTime() {
    const double now = curves_.Now() / kTicks;
    const double begin = curves_.First() / kTicks;
    if (following_ == Following::Latest) {
        from_ = std::max(begin, now - span_);
        to_ = from_ + span_;
    } else if (following_ == Following::All) {
        from_ = begin;
        to_ = std::max(now, begin + kLeastSpan);
    }
}

void PlotView::Refresh() {
    FollowTime();
    if (cursor_ && *cursor_ > curves_.Now()) SetCursor(std::nullopt);
    if (!isVisible()) return;
    Fill();
    plot_->replot(QCustomPlot::rpQueuedReplot);
}

void PlotView::Fill() {
    const QScopedValueRollback guard(isSettingRange_, true);
    for (const Strip& strip : strips_) {
        FillStrip(strip);
    }
    PlaceCursor();
}

void PlotView::FillStrip(const Strip& strip) {
    constexpr double kNothing = std::numeric_limits<double>::quiet_NaN();
    const auto from = static_cast<std::uint32_t>(std::max(0.0, std::floor(from_ * kTicks)));
    const auto to = static_cast<std::uint32_t>(std::max(1.0, std::ceil(to_ * kTicks)));
    const auto columns = static_cast<std::uint32_t>(std::max(strip.area->width(), 100));
    std::optional<QCPRange> values;
    for (const std::size_t index : strip.curves) {
        if (index >= curves_.Curves().size()) continue;
        const PlotCurve& curve = curves_.Curves()[index];
        QVector<QCPGraphData> data;
        for (const PlotPoint& point : PointsToDraw(curve, from, to, columns)) {
            data.append({point.tick / kTicks, point.value ? *point.value : kNothing});
            if (!point.value) continue;
            if (!values) values = QCPRange(*point.value, *point.value);
            values->expand(double{static_cast<double>(*point.value)});
        }
        if (!data.isEmpty() && curves_.Now() > curve.points.back().tick)
            data.append({std::min(curves_.Now(), to) / kTicks, data.last().value});
        graphs_[index]->data()->set(data, true);
    }
    strip.area->axis(QCPAxis::atBottom)->setRange(from_, to_);
    const QCPRange seen = values.value_or(QCPRange(0, 1));
    const double room = seen.size() > 0 ? seen.size() * 0.06 : 1;
    strip.area->axis(QCPAxis::atLeft)->setRange(seen.lower - room, seen.upper + room);
}

void PlotView::PlaceCursor() {
    for (const Strip& strip : strips_) {
        strip.cursor->setVisible(cursor_.has_value());
        if (!cursor_) continue;
        strip.cursor->point1->setCoords(*cursor_ / kTicks, 0);
        strip.cursor->point2->setCoords(*cursor_ / kTicks, 1);
    }
}

void PlotView::SetCursor(std::optional<std::uint32_t> tick) {
    if (cursor_ == tick) return;
    cursor_ = tick;
    PlaceCursor();
    plot_->replot(QCustomPlot::rpQueuedReplot);
    emit CursorMoved();
}

/// By hundredths of what is seen, at least by ticks.
void PlotView::MoveCursor(int steps) {
    const double middle = (from_ + std::min(to_, curves_.Now() / kTicks)) / 2 * kTicks;
    const double step = std::max(1.0, std::floor((to_ - from_) * kTicks / kStepsAcross));
    const double wanted = cursor_ ? *cursor_ + steps * step : middle;
    SetCursor(static_cast<std::uint32_t>(
        std::clamp<double>(std::round(wanted), curves_.First(), curves_.Now())));
    const double seconds = *cursor_ / kTicks;
    if (seconds >= from_ && seconds <= to_) return;
    const double by = seconds < from_ ? seconds - from_ : seconds - to_;
    SetRange(from_ + by, to_ + by);
    Follow(Following::Nothing);
}

void PlotView::keyPressEvent(QKeyEvent* event) {
    const bool pans = event->modifiers().testFlag(Qt::ShiftModifier);
    const double by = (to_ - from_) * kPan;
    const auto pan = [this](double seconds) {
        SetRange(from_ + seconds, to_ + seconds);
        Follow(Following::Nothing);
    };
    switch (event->key()) {
        case Qt::Key_Left: return pans ? pan(-by) : MoveCursor(-1);
        case Qt::Key_Right: return pans ? pan(by) : MoveCursor(1);
        case Qt::Key_Plus: return Zoom(0.5);
        case Qt::Key_Minus: return Zoom(2);
        case Qt::Key_Home: return Follow(Following::All);
        case Qt::Key_End: return Follow(Following::Latest);
        case Qt::Key_Escape: return SetCursor(std::nullopt);
        default: QWidget::keyPressEvent(event);
    }
}

void PlotView::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() != QEvent::PaletteChange && event->type() != QEvent::FontChange) return;
    TakeColours();
    Refresh();
}

void PlotView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    QRect inside = rect().adjusted(60, 20, -20, -50);  // of the axes
    if (inside.height() < hint_->heightForWidth(inside.width())) inside = rect();
    hint_->setGeometry(inside);
    Refresh();
}

void PlotView::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    update();
}

void PlotView::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    update();
}

/// Around the picture, so that one sees where the keys go.
void PlotView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(QPen(palette().color(hasFocus() ? QPalette::Highlight : QPalette::Mid),
                        hasFocus() ? kFocusFrame : 1));
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
}

/// On the screen the list of the curves tells the names.
QByteArray PlotView::Png() {
    const QSize size = plot_->size().expandedTo(kLeastPicture);
    Fill();
    QCPLegend* const legend = MakeLegend(size.width());
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    plot_->toPixmap(size.width(), size.height(), kPictureScale).save(&buffer, "PNG");
    plot_->plotLayout()->remove(legend);
    plot_->plotLayout()->simplify();
    Refresh();
    return bytes;
}

}  // namespace zentro
