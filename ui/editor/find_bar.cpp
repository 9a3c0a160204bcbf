#include "ui/editor/find_bar.h"

#include <QAccessible>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>
#include <algorithm>

#include "ui/editor/scintilla_text.h"
#include "ui/editor/source_editor.h"
#include "ui/editor/source_search.h"
#include "ui/support/icons.h"

namespace zentro {

namespace {

using Sci = QsciScintillaBase;

/// Nobody steps through more, and marking them takes time.
constexpr std::size_t kMostMatches = 9999;

QToolButton* MakeButton(QWidget* parent, const char* name, Qt::ArrowType arrow,
                        const QString& help) {
    auto* button = new QToolButton(parent);
    button->setObjectName(name);
    button->setArrowType(arrow);
    button->setAutoRaise(true);
    button->setToolTip(help);
    button->setAccessibleName(help);
    return button;
}

}  // namespace

FindBar::FindBar(SourceEditor& editor, QWidget* parent)
    : QWidget(parent),
      editor_(editor),
      text_(new QLineEdit(this)),
      matchCase_(new QCheckBox(tr("Match &case"), this)),
      count_(new QLabel(this)) {
    setObjectName("findBar");
    BuildLayout();
    text_->installEventFilter(this);
    matchCase_->installEventFilter(this);
    connect(text_, &QLineEdit::textChanged, this, &FindBar::Retype);
    connect(matchCase_, &QCheckBox::toggled, this, &FindBar::Retype);
    connect(&editor_, &SourceEditor::Edited, this, [this] {
        if (isVisible()) Look();
    });
    connect(&editor_, &SourceEditor::StatsChanged, this, [this] {
        if (isVisible()) ShowMatches();
    });
    hide();
}

void FindBar::BuildLayout() {
    text_->setObjectName("txtFindBar");
    text_->setAccessibleName(tr("Find in this text"));
    text_->setPlaceholderText(tr("Find in this text"));
    text_->setClearButtonEnabled(true);
    text_->setMinimumWidth(80);
    matchCase_->setObjectName("chkFindBarCase");
    count_->setObjectName("lblFindBar");
    count_->setMinimumWidth(fontMetrics().horizontalAdvance("9999 / 9999"));
    QToolButton* previous =
        MakeButton(this, "btnFindBarPrevious", Qt::UpArrow, tr("Previous match (Shift+Enter)"));
    QToolButton* next = MakeButton(this, "btnFindBarNext", Qt::DownArrow, tr("Next match (Enter)"));
    QToolButton* close = MakeButton(this, "btnFindBarClose", Qt::NoArrow, tr("Close (Escape)"));
    close->setText(QStringLiteral("\u00d7"));
    connect(previous, &QToolButton::clicked, this, [this] { Step(false); });
    connect(next, &QToolButton::clicked, this, [this] { Step(true); });
    connect(close, &QToolButton::clicked, this, &FindBar::Close);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(4, 2, 4, 2);
    layout->setSpacing(4);
    layout->addWidget(text_, 1);
    layout->addWidget(count_);
    for (QWidget* part : {static_cast<QWidget*>(previous), static_cast<QWidget*>(next),
                          static_cast<QWidget*>(matchCase_), static_cast<QWidget*>(close)}) {
        layout->addWidget(part);
    }
}

void FindBar::Open() {
    origin_ = Send(editor_, Sci::SCI_GETSELECTIONSTART);
    const QString selected = editor_.selectedText();
    show();
    text_->setFocus(Qt::ShortcutFocusReason);
    if (!selected.isEmpty() && !selected.contains('\n')) text_->setText(selected);
    text_->selectAll();
    Retype();
}

void FindBar::Close() {
    hide();
    matches_.clear();
    editor_.Soft().Clear(SoftMark::Match);
    editor_.setFocus();
}

FindOptions FindBar::Options() const {
    FindOptions options;
    options.setFlag(FindOption::MatchCase, matchCase_->isChecked());
    return options;
}

/// Looks for the text anew and selects the first match from where the search began.
void FindBar::Retype() {
    if (!isVisible()) return;
    Look();
    if (!text_->text().isEmpty()) emit Searched(text_->text(), Options());
    if (matches_.empty()) return;
    const auto found = std::ranges::lower_bound(matches_, origin_, {}, &TextRange::begin);
    Select(found == matches_.end() ? 0 : static_cast<std::size_t>(found - matches_.begin()));
}

void FindBar::Look() {
    matches_ = FindAllInSource(editor_, text_->text(), Options(), kMostMatches);
    ShowMatches();
}

/// Goes to the match after or before the selection, round the end of the text.
void FindBar::Step(bool forward) {
    if (matches_.empty()) return;
    const long begin = Send(editor_, Sci::SCI_GETSELECTIONSTART);
    const bool isEmpty = Send(editor_, Sci::SCI_GETSELECTIONEMPTY) != 0;
    const std::size_t count = matches_.size();
    if (forward) {
        const long from = isEmpty ? begin : begin + 1;
        const auto found = std::ranges::lower_bound(matches_, from, {}, &TextRange::begin);
        Select(static_cast<std::size_t>(found - matches_.begin()) % count);
    } else {
        const auto found = std::ranges::lower_bound(matches_, begin, {}, &TextRange::begin);
        Select((static_cast<std::size_t>(found - matches_.begin()) + count - 1) % count);
    }
}

void FindBar::Select(std::size_t match) {
    origin_ = matches_[match].begin;
    editor_.SelectRange(matches_[match].begin, matches_[match].end);
    ShowMatches();
}

/// Marks and counts the matches. The selected one has the colours of the selection.
void FindBar::ShowMatches() {
    const TextRange selected{Send(editor_, Sci::SCI_GETSELECTIONSTART),
                             Send(editor_, Sci::SCI_GETSELECTIONEND)};
    std::vector<TextRange> marked = matches_;
    const auto place = std::ranges::find(marked, selected);
    const auto number = place == marked.end() ? 0 : place - marked.begin() + 1;
    if (number != 0) marked.erase(place);
    editor_.Soft().Show(SoftMark::Match, marked);
    ShowCount(number);
}

QString FindBar::CountText(std::ptrdiff_t number) const {
    const std::size_t count = matches_.size();
    if (text_->text().isEmpty()) return {};
    if (count == 0) return tr("Not found");
    if (count == kMostMatches) return tr("More than %1").arg(count - 1);
    if (number != 0) return tr("%1 of %2").arg(number).arg(count);
    return count == 1 ? tr("1 match") : tr("%1 matches").arg(count);
}

void FindBar::ShowCount(std::ptrdiff_t number) {
    const QString text = CountText(number);
    if (text == count_->text()) return;
    count_->setText(text);
    QAccessibleEvent changed(count_, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&changed);
}

/// The keys of the bar come before those of the menus.
bool FindBar::eventFilter(QObject* watched, QEvent* event) {
    const bool isOverride = event->type() == QEvent::ShortcutOverride;
    if (!isOverride && event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    if (isOverride) {
        const bool isOurs = key->key() == Qt::Key_F3 || key->key() == Qt::Key_Escape;
        if (isOurs) event->accept();
        return isOurs;
    }
    return HandleKey(key->key(), key->modifiers() & ~Qt::KeypadModifier);
}

bool FindBar::HandleKey(int key, Qt::KeyboardModifiers modifiers) {
    const bool isShifted = modifiers == Qt::ShiftModifier;
    if (!isShifted && modifiers != Qt::NoModifier) return false;
    switch (key) {
        case Qt::Key_Escape: Close(); return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_F3: Step(!isShifted); return true;
        case Qt::Key_Down: Step(true); return true;
        case Qt::Key_Up: Step(false); return true;
        default: return false;
    }
}

void FindBar::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        count_->setMinimumWidth(fontMetrics().horizontalAdvance("9999 / 9999"));
}

}  // namespace zentro
