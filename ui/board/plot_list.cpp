#include "ui/board/plot_list.h"

#include <QHeaderView>
#include <QPixmap>
#include <QSignalBlocker>
#include <algorithm>
#include <array>

namespace zentro {

namespace {

constexpr int kSwatch = 12;  // pixels

QString GroupWords(PlotGroup group) {
    switch (group) {
        case PlotGroup::Variables: return PlotList::tr("Variables");
        case PlotGroup::Inputs: return PlotList::tr("Inputs");
        case PlotGroup::Outputs: return PlotList::tr("Outputs");
    }
    return {};
}

QIcon Swatch(const QColor& colour) {
    QPixmap picture(kSwatch, kSwatch);
    picture.fill(colour);
    return {picture};
}

}  // namespace

PlotList::PlotList(QWidget* parent) : QTreeWidget(parent) {
    setObjectName("PlotList");
    setAccessibleName(tr("What is plotted"));
    setColumnCount(2);
    setHeaderLabels({tr("Plotted"), tr("Value")});
    setUniformRowHeights(true);
    setIndentation(10);
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(0, QHeaderView::Stretch);
    header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    connect(this, &QTreeWidget::itemChanged, this, &PlotList::TakeTick);
}

void PlotList::List(std::vector<NamedPlotSource> sources) {
    sources_ = std::move(sources);
    Fill();
    emit TickedChanged();
}

void PlotList::Tick(const QStringList& names) {
    ticked_ = names;
    Fill();
    emit TickedChanged();
}

void PlotList::Fill() {
    const QSignalBlocker quiet(this);
    const QTreeWidgetItem* current = currentItem();
    const QString currentName = current == nullptr ? QString() : current->text(0);
    clear();
    items_.clear();
    colours_.clear();
    constexpr std::array kGroups{PlotGroup::Variables, PlotGroup::Inputs, PlotGroup::Outputs};
    for (const PlotGroup group : kGroups) {
        auto* heading = new QTreeWidgetItem(this, {GroupWords(group)});
        heading->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        for (const NamedPlotSource& each : sources_) {
            if (each.group != group) continue;
            auto* item = new QTreeWidgetItem(heading, {each.name});
            item->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
            const bool isTicked = ticked_.contains(each.name);
            item->setCheckState(0, isTicked ? Qt::Checked : Qt::Unchecked);
            items_[each.name] = item;
        }
        heading->setExpanded(true);
        heading->setHidden(heading->childCount() == 0);
    }
    if (QTreeWidgetItem* again = Item(currentName)) setCurrentItem(again);
}

QTreeWidgetItem* PlotList::Item(const QString& name) const {
    const auto found = items_.find(name);
    return found == items_.end() ? nullptr : found->second;
}

void PlotList::TakeTick(QTreeWidgetItem* item) {
    const QString name = item->text(0);
    const bool isTicked = item->checkState(0) == Qt::Checked;
    if (Item(name) != item || isTicked == ticked_.contains(name)) return;
    if (isTicked && Ticked().size() >= PlotCurves::kMost) {
        item->setCheckState(0, Qt::Unchecked);  // which is no news
        return emit TooMany();
    }
    if (isTicked) {
        ticked_.append(name);
    } else {
        ticked_.removeAll(name);
        item->setIcon(0, {});
        item->setText(1, {});
        colours_.erase(name);
    }
    emit TickedChanged();
}

std::vector<NamedPlotSource> PlotList::Ticked() const {
    std::vector<NamedPlotSource> ticked;
    for (const QString& name : ticked_) {
        const auto source = std::ranges::find(sources_, name, &NamedPlotSource::name);
        if (source != sources_.end() && ticked.size() < PlotCurves::kMost)
            ticked.push_back(*source);
    }
    return ticked;
}

void PlotList::ShowNotes(const std::map<QString, Note>& notes) {
    const QSignalBlocker quiet(this);
    for (const auto& [name, note] : notes) {
        QTreeWidgetItem* item = Item(name);
        if (item == nullptr) continue;
        if (item->text(1) != note.value) item->setText(1, note.value);
        const auto shown = colours_.find(name);
        if (shown != colours_.end() && shown->second == note.colour.rgb()) continue;
        colours_[name] = note.colour.rgb();
        item->setIcon(0, Swatch(note.colour));
    }
    viewport()->update();
}

}  // namespace zentro
