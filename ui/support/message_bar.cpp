#include "ui/support/message_bar.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <QToolTip>
#include <algorithm>

namespace zentro {

namespace {

constexpr int kMargin = 6;  // pixels to the left of the message
constexpr int kGap = 12;    // pixels between the message and the first panel

}  // namespace

MessageBar::MessageBar(QWidget* parent, std::chrono::milliseconds newsTime) : QStatusBar(parent) {
    newsEnd_.setSingleShot(true);
    newsEnd_.setInterval(newsTime);
    connect(&newsEnd_, &QTimer::timeout, this, [this] {
        news_.clear();
        ShowFirst();
    });
}

void MessageBar::ShowLasting(const QString& text) {
    lasting_ = text;
    if (!text.isEmpty()) news_.clear();
    ShowFirst();
}

void MessageBar::ShowNews(const QString& text) {
    news_ = text;
    newsEnd_.start();
    ShowFirst();
}

void MessageBar::ShowHint(const QString& text) {
    hint_ = text;
    // News that nobody can see do not grow old.
    if (hint_.isEmpty()) {
        newsEnd_.start();
    } else {
        newsEnd_.stop();
    }
    ShowFirst();
}

void MessageBar::ShowFirst() {
    showMessage(!hint_.isEmpty() ? hint_ : !news_.isEmpty() ? news_ : lasting_);
}

/// What the panels leave. While there is a message, only the permanent ones can be seen.
QRect MessageBar::MessageRect() const {
    int right = width() - kGap;
    for (const QWidget* panel : findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (panel->isVisible() && !panel->isWindow()) right = std::min(right, panel->x() - kGap);
    }
    return {kMargin, 0, std::max(right - kMargin, 0), height()};
}

QString MessageBar::ShownMessage() const {
    QString line = currentMessage();
    line.replace('\n', "  ");
    return fontMetrics().elidedText(line, Qt::ElideRight, MessageRect().width());
}

bool MessageBar::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip || currentMessage().isEmpty())
        return QStatusBar::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    if (!MessageRect().contains(help->pos())) return QStatusBar::event(event);
    // As a paragraph it is broken into lines of a readable length.
    QString text = currentMessage().toHtmlEscaped();
    text.replace('\n', "<br>");
    QToolTip::showText(help->globalPos(), "<p>" + text + "</p>", this, MessageRect());
    return true;
}

void MessageBar::paintEvent(QPaintEvent* event) {
    if (currentMessage().isEmpty()) return QStatusBar::paintEvent(event);
    QPainter painter(this);
    QStyleOption option;
    option.initFrom(this);
    style()->drawPrimitive(QStyle::PE_PanelStatusBar, &option, &painter, this);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(MessageRect(), Qt::AlignLeading | Qt::AlignVCenter | Qt::TextSingleLine,
                     ShownMessage());
}

}  // namespace zentro
