#pragma once

#include <QColor>
#include <QStringList>
#include <QTreeWidget>
#include <functional>
#include <map>
#include <vector>

#include "desktop/plot_sources.h"

namespace zentro {

/// Everything that can be plotted, to be ticked, with the colours and values of what is.
class PlotList : public QTreeWidget {
    Q_OBJECT

  public:
    explicit PlotList(QWidget* parent);

    /// Lists other sources. What has been ticked stays so where its name is there again, also
    /// later.
    void List(std::vector<NamedPlotSource> sources);
    /// Ticks what has these names, and nothing else.
    void Tick(const QStringList& names);

    /// What is ticked and there, in the order in which it was ticked.
    std::vector<NamedPlotSource> Ticked() const;

    /// What is shown beside a name that is ticked.
    struct Note {
        QColor colour;
        QString value;
    };
    void ShowNotes(const std::map<QString, Note>& notes);

  signals:
    void TickedChanged();
    /// One more was ticked than there can be curves: it was not taken.
    void TooMany();

  private:
    void Fill();
    void TakeTick(QTreeWidgetItem* item);
    QTreeWidgetItem* Item(const QString& name) const;

    std::vector<NamedPlotSource> sources_;
    QStringList ticked_;  ///< names, also of what is not there
    std::map<QString, QTreeWidgetItem*> items_;
    std::map<QString, QRgb> colours_;  ///< shown
};

}  // namespace zentro
