#include "ui/dialogs/help_search.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextDocument>
#include <QToolButton>
#include <algorithm>

#include "ui/dialogs/help_address.h"

namespace zentro {

HelpSearch::HelpSearch(QTextBrowser& page, QWidget* parent)
    : QWidget(parent), page_(page), field_(new QLineEdit), count_(new QLabel) {
    field_->setObjectName("txtSearch");
    field_->setClearButtonEnabled(true);
    field_->setPlaceholderText(tr("A word of this or another language, or any text"));
    count_->setObjectName("lblMatches");
    auto* label = new QLabel(tr("&Look for"));
    label->setBuddy(field_);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(3);
    layout->addWidget(label);
    layout->addWidget(field_, 1);
    AddButton("SearchPrevious", tr("Previous"), &HelpSearch::FindPrevious);
    AddButton("SearchNext", tr("Next"), &HelpSearch::FindNext);
    layout->addWidget(count_);
    connect(field_, &QLineEdit::textEdited, this, &HelpSearch::TextEdited);
    connect(field_, &QLineEdit::textChanged, this, &HelpSearch::FindMatches);
    // Once the new page is complete.
    connect(page_.document(), &QTextDocument::contentsChanged, this, &HelpSearch::FindMatches,
            Qt::QueuedConnection);
}

void HelpSearch::AddButton(const char* name, const QString& text, void (HelpSearch::*pressed)()) {
    auto* button = new QToolButton;
    button->setObjectName(name);
    button->setText(text);
    button->setFocusPolicy(Qt::StrongFocus);
    connect(button, &QToolButton::clicked, this, pressed);
    layout()->addWidget(button);
}

void HelpSearch::Open(const QString& text) {
    if (!text.isEmpty()) field_->setText(text);
    field_->setFocus();
    field_->selectAll();
}

/// Whoever types sees how often the text stands on the page; Return goes there.
void HelpSearch::FindMatches() {
    matches_.clear();
    isNew_ = true;
    const QString text = field_->text();
    const QTextDocument& document = *page_.document();
    if (!text.isEmpty()) {
        for (QTextCursor found = document.find(text); !found.isNull();
             found = document.find(text, found))
            matches_.push_back({found.selectionStart(), found.selectionEnd()});
    }
    Highlight();
    count_->setText(text.isEmpty()     ? QString()
                    : matches_.empty() ? tr("Not found")
                                       : tr("%1 found").arg(matches_.size()));
}

void HelpSearch::FindNext() {
    if (field_->text().isEmpty()) return Open();
    const int from = isNew_ ? FirstVisible() : page_.textCursor().selectionEnd();
    if (isNew_ && GoToPlace()) return;
    if (matches_.empty()) return Tell(tr("Not found"));
    const auto next = std::ranges::lower_bound(matches_, from, {}, &Match::begin);
    if (next == matches_.end()) return Select(0, tr("%1 of %2, again from the top"));
    Select(static_cast<std::size_t>(next - matches_.begin()), tr("%1 of %2"));
}

void HelpSearch::FindPrevious() {
    if (field_->text().isEmpty()) return Open();
    const int from = isNew_ ? FirstVisible() : page_.textCursor().selectionStart();
    if (matches_.empty()) return Tell(tr("Not found"));
    const auto next = std::ranges::lower_bound(matches_, from, {}, &Match::begin);
    if (next == matches_.begin())
        return Select(matches_.size() - 1, tr("%1 of %2, again from the bottom"));
    Select(static_cast<std::size_t>(next - matches_.begin()) - 1, tr("%1 of %2"));
}

/// False when the page has no place of that name.
bool HelpSearch::GoToPlace() {
    const std::optional<PagePlace> place = FindPlace(*page_.document(), field_->text().trimmed());
    if (!place) return false;
    emit PlaceNamed(place->name);
    const auto match = std::ranges::lower_bound(matches_, place->position, {}, &Match::begin);
    const QTextBlock block = page_.document()->findBlock(place->position);
    if (match != matches_.end() && match->begin < block.position() + block.length()) {
        Select(static_cast<std::size_t>(match - matches_.begin()), tr("%1 of %2"));
    } else {
        QTextCursor cursor = page_.textCursor();
        cursor.setPosition(place->position);
        page_.setTextCursor(cursor);
        isNew_ = false;
        Tell(matches_.empty() ? QString() : tr("%1 found").arg(matches_.size()));
    }
    return true;
}

int HelpSearch::FirstVisible() const {
    return page_.cursorForPosition(QPoint(0, 0)).position();
}

void HelpSearch::Select(std::size_t match, const QString& text) {
    QTextCursor cursor(page_.document());
    cursor.setPosition(matches_[match].begin);
    cursor.setPosition(matches_[match].end, QTextCursor::KeepAnchor);
    page_.setTextCursor(cursor);
    isNew_ = false;
    Highlight();
    Tell(text.arg(match + 1).arg(matches_.size()));
}

/// All of them pale, the selected one strong, which the page's own selection is not while the field
/// has the focus.
void HelpSearch::Highlight() {
    constexpr std::size_t kMost = 1000;  // painting looks through all of them
    QList<QTextEdit::ExtraSelection> marks;
    const QTextCursor selected = page_.textCursor();
    for (const Match& match : matches_) {
        if (matches_.size() > kMost && match.begin != selected.selectionStart()) continue;
        QTextEdit::ExtraSelection mark;
        mark.cursor = QTextCursor(page_.document());
        mark.cursor.setPosition(match.begin);
        mark.cursor.setPosition(match.end, QTextCursor::KeepAnchor);
        const bool isSelected =
            match.begin == selected.selectionStart() && match.end == selected.selectionEnd();
        mark.format.setBackground(isSelected ? QColor(255, 160, 60) : QColor(255, 236, 150));
        mark.format.setForeground(Qt::black);
        marks += mark;
    }
    page_.setExtraSelections(marks);
}

/// Tells who cannot see the window, too.
void HelpSearch::Tell(const QString& text) {
    count_->setText(text);
    QAccessibleEvent alert(count_, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void HelpSearch::keyPressEvent(QKeyEvent* event) {
    const bool isBackward = event->modifiers().testFlag(Qt::ShiftModifier);
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter: return isBackward ? FindPrevious() : FindNext();
        case Qt::Key_Escape: field_->clear(); return page_.setFocus();
        default: QWidget::keyPressEvent(event);
    }
}

}  // namespace zentro
