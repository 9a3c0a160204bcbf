#include "ui/terminal/variable_list.h"

#include <QEvent>
#include <QFontDatabase>
#include <QPixmap>
#include <QStyledItemDelegate>
#include <algorithm>
#include <array>
#include <cstdio>

#include "ui/support/icons.h"

namespace zentro {

namespace {

constexpr int kMarkRole = Qt::UserRole;  // how many more times the line is shown with a mark
constexpr int kTabWidth = 8;

/// Draws tabs as blanks, so that the columns stand at every size of the font.
class LineDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QString displayText(const QVariant& value, const QLocale&) const override {
        return ExpandTabs(value.toString());
    }
};

}  // namespace

VariableList::VariableList(QWidget* parent) : QListWidget(parent) {
    setObjectName("ListVars");
    setAccessibleName(tr("Variables and their values"));
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setItemDelegate(new LineDelegate(this));
    setTextElideMode(Qt::ElideNone);
    setUniformItemSizes(true);
    MakeIcons();
}

void VariableList::MakeIcons() {
    const int side = fontMetrics().ascent();
    setIconSize({side, side});
    mark_ = ThemedIcon("value-changed");
    QPixmap empty(side, side);
    empty.fill(Qt::transparent);
    noMark_ = QIcon(empty);
}

void VariableList::Load(const std::vector<DebugVariable>& variables) {
    clear();
    for (const std::string& line : VariableLines(variables)) {
        auto* item = new QListWidgetItem(QString::fromStdString(line), this);
        Mark(*item, 0);
    }
}

void VariableList::ShowValues(const std::vector<DebugVariable>& variables, int markedTimes) {
    const std::vector<std::string> lines = VariableLines(variables);
    for (int row = 0; row < count() && row < static_cast<int>(lines.size()); ++row) {
        QListWidgetItem& shown = *item(row);
        const QString line = QString::fromStdString(lines[static_cast<std::size_t>(row)]);
        const int marked = shown.data(kMarkRole).toInt();
        // A value that is shown for the first time has not changed.
        const bool changed = line != shown.text() && !shown.text().endsWith(u'\t');
        const int times = changed ? markedTimes : std::max(marked - 1, 0);
        if (line != shown.text()) shown.setText(line);
        if (times != marked) Mark(shown, times);
    }
}

void VariableList::Mark(QListWidgetItem& item, int times) {
    const bool wasMarked = item.data(kMarkRole).toInt() > 0;
    const bool marked = times > 0;
    item.setData(kMarkRole, times);
    if (marked == wasMarked && !item.icon().isNull()) return;
    QFont lineFont = font();
    lineFont.setBold(marked);
    item.setFont(lineFont);
    item.setIcon(marked ? mark_ : noMark_);
    item.setData(Qt::AccessibleDescriptionRole, marked ? tr("changed") : QString());
}

void VariableList::ShowOnly(const QString& part) {
    for (int row = 0; row < count(); ++row)
        setRowHidden(row,
                     !item(row)->text().section(u'\t', 0, 0).contains(part, Qt::CaseInsensitive));
}

int VariableList::MarkedCount() const {
    int marked = 0;
    for (int row = 0; row < count(); ++row)
        marked += item(row)->data(kMarkRole).toInt() > 0 ? 1 : 0;
    return marked;
}

void VariableList::changeEvent(QEvent* event) {
    QListWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) MakeIcons();
}

QString ExpandTabs(const QString& text) {
    QString expanded;
    for (const QChar c : text) {
        if (c == u'\t') {
            expanded += QString(kTabWidth - expanded.size() % kTabWidth, u' ');
        } else {
            expanded += c;
        }
    }
    return expanded;
}

}  // namespace zentro
