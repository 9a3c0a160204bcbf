#include "ui/board/plot_window.h"

#include <QEvent>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QSplitter>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <chrono>
#include <map>

#include "config/file.h"
#include "desktop/text_file.h"
#include "ui/board/plot_list.h"
#include "ui/board/plot_view.h"
#include "ui/support/colours.h"
#include "ui/support/dialogs.h"
#include "ui/support/icons.h"
#include "ui/support/spoken_label.h"

namespace zentro {

namespace {

/// Colours that people who see few colours can tell apart. Those of the second half are dashed.
constexpr std::array<QRgb, PlotCurves::kMost> kColours{
    0xFF0072B2, 0xFFD55E00, 0xFF009E73, 0xFFCC79A7, 0xFF000000, 0xFF56B4E9, 0xFFE69F00, 0xFF7F3FBF};
constexpr std::size_t kFirstDashed = PlotCurves::kMost / 2;
constexpr double kZoom = 2;
constexpr std::chrono::seconds kTimeToRead{6};

QString SecondsText(std::uint32_t tick) {
    return QLocale().toString(tick / double{kTicksPerSecond}, 'f', 2);
}

}  // namespace

PlotWindow::PlotWindow(Workbench& workbench, VirtualBoardHost& host,
                       std::function<QString()> programFolder)
    : workbench_(workbench),
      host_(host),
      programFolder_(std::move(programFolder)),
      view_(new PlotView(host.Curves(), this)),
      list_(new PlotList(this)),
      status_(new QLabel(this)) {
    setObjectName("frmPlot");
    setWindowIcon(ThemedIcon("plot"));
    setWindowTitle(tr("Plot"));
    status_->setObjectName("PlotStatus");
    auto* both = new QSplitter(this);
    both->addWidget(view_);
    both->addWidget(list_);
    both->setStretchFactor(0, 1);
    both->setChildrenCollapsible(false);
    both->setSizes({380, 240});
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(6, 6, 6, 6);
    viewButtons_ = MakeViewButtons();
    saveButtons_ = MakeSaveButtons();
    buttons_ = new QHBoxLayout;
    buttons_->addLayout(viewButtons_);
    buttons_->addLayout(saveButtons_);
    rows->addLayout(buttons_);
    rows->addWidget(both, 1);
    rows->addWidget(status_);
    setFocusProxy(list_);
    connect(&host, &VirtualBoardHost::Changed, this, &PlotWindow::Refresh);
    connect(list_, &PlotList::TickedChanged, this, &PlotWindow::Choose);
    connect(list_, &PlotList::TooMany, this, [this] {
        Tell(tr("There is room for %1 curves: take a tick away first.").arg(PlotCurves::kMost));
    });
    told_.setSingleShot(true);
    told_.setInterval(kTimeToRead);
    connect(&told_, &QTimer::timeout, this, &PlotWindow::ShowValues);
    connect(view_, &PlotView::CursorMoved, this, &PlotWindow::ShowValues);
    connect(view_, &PlotView::FollowingChanged, this, &PlotWindow::ShowFollowing);
    ShowFollowing();
}

PlotWindow::~PlotWindow() {
    host_.disconnect(this);
}

QToolButton* PlotWindow::AddButton(QHBoxLayout* row, const char* name, const QString& text,
                                   const QString& help) {
    auto* button = new QToolButton(this);
    button->setObjectName(name);
    button->setText(text);
    button->setToolTip(help);
    button->setAccessibleDescription(help);
    button->setFocusPolicy(Qt::TabFocus);
    row->addWidget(button);
    return button;
}

QHBoxLayout* PlotWindow::MakeViewButtons() {
    auto* row = new QHBoxLayout;
    row->setSpacing(2);
    latest_ = AddButton(row, "BtnPlotLatest", tr("&Latest"),
                        tr("Keep the newest values in sight; when it is off, the picture stands"));
    all_ = AddButton(row, "BtnPlotAll", tr("&All"), tr("Show everything since the start"));
    for (QToolButton* button : {latest_, all_})
        button->setCheckable(true);
    connect(latest_, &QToolButton::clicked, this, [this](bool on) {
        view_->Follow(on ? PlotView::Following::Latest : PlotView::Following::Nothing);
    });
    connect(all_, &QToolButton::clicked, this, [this](bool on) {
        view_->Follow(on ? PlotView::Following::All : PlotView::Following::Nothing);
    });
    QToolButton* in = AddButton(row, "BtnPlotZoomIn", "+", tr("Show less of the time"));
    QToolButton* out = AddButton(row, "BtnPlotZoomOut", "−", tr("Show more of the time"));
    in->setAccessibleName(tr("Zoom in"));
    out->setAccessibleName(tr("Zoom out"));
    connect(in, &QToolButton::clicked, view_, [this] { view_->Zoom(1 / kZoom); });
    connect(out, &QToolButton::clicked, view_, [this] { view_->Zoom(kZoom); });
    QToolButton* separate = AddButton(row, "BtnPlotSeparate", tr("&Separate"),
                                      tr("Each curve has a strip and a scale of its own"));
    separate->setCheckable(true);
    connect(separate, &QToolButton::toggled, view_, &PlotView::SetSeparate);
    row->addStretch(1);
    return row;
}

QHBoxLayout* PlotWindow::MakeSaveButtons() {
    auto* row = new QHBoxLayout;
    row->setSpacing(2);
    saveTable_ = AddButton(row, "BtnPlotTable", tr("Save &Table..."),
                           tr("Save the values for a spreadsheet, as a CSV file"));
    savePicture_ = AddButton(row, "BtnPlotPicture", tr("Save &Picture..."),
                             tr("Save the picture as it is seen, as a PNG file"));
    connect(saveTable_, &QToolButton::clicked, this, &PlotWindow::SaveTable);
    connect(savePicture_, &QToolButton::clicked, this, &PlotWindow::SavePicture);
    return row;
}

/// The buttons that save go below where there is no room beside the others.
void PlotWindow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    const int wanted = viewButtons_->sizeHint().width() + saveButtons_->sizeHint().width();
    const bool isNarrow = width() < wanted + 2 * buttons_->spacing();
    buttons_->setAlignment(saveButtons_, isNarrow ? Qt::AlignLeft : Qt::Alignment());
    buttons_->setDirection(isNarrow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
}

void PlotWindow::ShowProgram(const Compilation* compilation) {
    std::vector<NamedPlotSource> sources = PlotSources(compilation);
    // A window that is opened again finds the curves that the board goes on with.
    QStringList names;
    for (const PlotCurve& curve : host_.Curves().Curves()) {
        const auto source = std::ranges::find(sources, curve.source, &NamedPlotSource::source);
        if (source != sources.end()) names += source->name;
    }
    const bool isFirst = list_->topLevelItemCount() == 0;
    if (isFirst && !names.isEmpty()) list_->Tick(names);
    list_->List(std::move(sources));
}

/// Who keeps its tick keeps its colour.
QColor PlotWindow::ColourOf(const QString& name) {
    auto* slot = std::ranges::find(coloured_, name);
    if (slot == coloured_.end()) {
        slot = std::ranges::find_if(coloured_, [this](const QString& owner) {
            return std::ranges::find(chosen_, owner, &NamedPlotSource::name) == chosen_.end();
        });
    }
    *slot = name;
    const auto index = static_cast<std::size_t>(slot - coloured_.begin());
    return ReadableOn(QColor::fromRgb(kColours[index]), palette().color(QPalette::Base));
}

void PlotWindow::Choose() {
    chosen_ = list_->Ticked();
    std::vector<PlotSource> sources;
    std::vector<CurveLook> looks;
    for (const NamedPlotSource& each : chosen_) {
        sources.push_back(each.source);
        const QColor colour = ColourOf(each.name);
        const auto slot = std::ranges::find(coloured_, each.name) - coloured_.begin();
        looks.push_back({each.name, colour, static_cast<std::size_t>(slot) >= kFirstDashed});
    }
    host_.Plot(sources);
    view_->SetLooks(std::move(looks));
    for (QToolButton* button : {saveTable_, savePicture_})
        button->setEnabled(!chosen_.empty());
    ShowValues();
}

void PlotWindow::Refresh() {
    if (!isVisible()) return;
    view_->Refresh();
    ShowValues();
}

/// Beside each name its value at the cursor, or the present one.
void PlotWindow::ShowValues() {
    const PlotCurves& curves = host_.Curves();
    const std::uint32_t tick = view_->Cursor().value_or(curves.Now());
    std::map<QString, PlotList::Note> notes;
    QStringList spoken;
    for (std::size_t index = 0; index < chosen_.size() && index < curves.Curves().size(); ++index) {
        const auto value = ValueAt(curves.Curves()[index], tick);
        const QString text = value ? QString::number(*value) : tr("none");
        notes[chosen_[index].name] = {ColourOf(chosen_[index].name), text};
        spoken += tr("%1: %2").arg(chosen_[index].name, text);
    }
    list_->ShowNotes(notes);
    const QString time = view_->Cursor() ? tr("Values at %1 s").arg(SecondsText(tick))
                                         : tr("Values now, at %1 s").arg(SecondsText(tick));
    if (!told_.isActive()) status_->setText(time);
    if (view_->Cursor()) view_->setAccessibleDescription(time + ". " + spoken.join(", "));
}

/// Something that stays readable while the values go on.
void PlotWindow::Tell(const QString& text) {
    status_->setText(text);
    SayWithCaption(*status_, tr("Plot"));
    told_.start();
}

void PlotWindow::ShowFollowing() {
    latest_->setChecked(view_->Followed() == PlotView::Following::Latest);
    all_->setChecked(view_->Followed() == PlotView::Following::All);
}

void PlotWindow::SaveTable() {
    Save(tr("Save Table"), "plot.csv", "Tables|*.csv|All Files (*.*)|*.*", "csv", [this] {
        std::vector<std::string> names;
        for (const NamedPlotSource& each : chosen_) {
            names.push_back(each.name.toStdString());
        }
        return CsvOf(host_.Curves(), names);
    });
}

void PlotWindow::SavePicture() {
    Save(tr("Save Picture"), "plot.png", "Pictures|*.png|All Files (*.*)|*.*", "png",
         [this] { return view_->Png().toStdString(); });
}

/// What was there when the user asked is saved, however long he looks for a name.
void PlotWindow::Save(const QString& title, const QString& name, const QString& filters,
                      const QString& suffix, const std::function<std::string()>& content) {
    FileChoice choice;
    choice.title = title;
    choice.folder = programFolder_();
    choice.suggestedName = name;
    choice.filters = filters;
    choice.defaultSuffix = suffix;
    const std::string bytes = content();
    const std::optional<QString> path = workbench_.dialogs.ChooseFileToSave(this, choice);
    if (!path || path->isEmpty()) return;
    const auto problem = workbench_.disk->Ask(
        *path, Patience::WhileWanted,
        [path = SystemPath(*path), bytes] { return WriteWholeFile(path, bytes); });
    const QString fileName = QFileInfo(*path).fileName();
    if (problem && problem->empty()) return Tell(tr("Saved %1").arg(fileName));
    workbench_.dialogs.ShowMessage(
        this, tr("%1 was not saved: %2")
                  .arg(fileName, problem ? QString::fromStdString(*problem) : tr(kNoAnswer)));
}

void PlotWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    Refresh();
}

void PlotWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) Choose();
}

}  // namespace zentro
