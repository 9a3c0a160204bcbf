#include "ui/terminal/variable_list.h"

#include <QEvent>
#include <QPixmap>
#include <QStyledItemDelegate>
#include <algorithm>
#include <array>
#include <cstdio>
#include <span>

#include "desktop/variable_values.h"
#include "ui/support/icons.h"
#include "ui/support/source_font.h"

namespace zentro {

namespace {

constexpr int kMarkRole = Qt::UserRole;  // how many more times the line is shown with a mark
constexpr int kCompilerRole = Qt::UserRole + 1;  // whether it is one of the compiler's own
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

VariableList::VariableList(const CommandCatalogue& commands, QWidget* parent)
    : QListWidget(parent), commands_(commands) {
    setObjectName("ListVars");
    setAccessibleName(tr("Variables and their values"));
    setFont(FixedFont());
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

/// The line with its value in words behind it, where words say more.
QString VariableList::LineOf(const std::string& line, const DebugVariable& variable) const {
    const QString shown = QString::fromStdString(line);
    const bool hasWords = variable.type == DataType::Flag || variable.type == DataType::Table;
    if (variable.bytes.empty() || variable.debugValue.empty() || !hasWords) return shown;
    const std::size_t count = std::min<std::size_t>(variable.bytes.size(), variable.size);
    return shown + u'\t' +
           ValueText(std::span(variable.bytes).first(count), variable.type, variable.size,
                     commands_);
}

void VariableList::Load(const std::vector<DebugVariable>& variables) {
    clear();
    const std::vector<std::string> lines = VariableLines(variables);
    for (std::size_t row = 0; row < lines.size(); ++row) {
        auto* item = new QListWidgetItem(LineOf(lines[row], variables[row]), this);
        item->setData(kCompilerRole, variables[row].isOfCompiler);
        Mark(*item, 0);
    }
    HideRows();
}

void VariableList::ShowValues(const std::vector<DebugVariable>& variables, int markedTimes,
                              Marks marks) {
    const std::vector<std::string> lines = VariableLines(variables);
    for (int row = 0; row < count() && row < static_cast<int>(lines.size()); ++row) {
        QListWidgetItem& shown = *item(row);
        const auto index = static_cast<std::size_t>(row);
        const QString line = LineOf(lines[index], variables[index]);
        const int marked = shown.data(kMarkRole).toInt();
        // A value that is shown for the first time has not changed.
        const bool changed = line != shown.text() && !shown.text().endsWith(u'\t');
        const int left = marks == Marks::Keep    ? marked
                         : marks == Marks::Renew ? 0
                                                 : std::max(marked - 1, 0);
        const int times = changed ? markedTimes : left;
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
    part_ = part;
    HideRows();
}

void VariableList::ShowCompilersOwn(bool shows) {
    showsCompilersOwn_ = shows;
    HideRows();
}

void VariableList::HideRows() {
    for (int row = 0; row < count(); ++row) {
        const QString name = item(row)->text().section(u'\t', 0, 0);
        const bool isHidden = item(row)->data(kCompilerRole).toBool() && !showsCompilersOwn_;
        setRowHidden(row, isHidden || !name.contains(part_, Qt::CaseInsensitive));
    }
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
