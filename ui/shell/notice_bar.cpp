#include "ui/shell/notice_bar.h"

#include <QAccessible>
#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <algorithm>
#include <utility>

namespace zentro {

NoticeBar::NoticeBar(QWidget* parent)
    : QWidget(parent), text_(new QLabel(this)), accept_(new QPushButton(this)) {
    setObjectName("noticeBar");
    text_->setObjectName("noticeText");
    text_->setWordWrap(true);
    accept_->setObjectName("noticeAccept");
    auto* dismiss = new QPushButton(tr("&Not Now"), this);
    dismiss->setObjectName("noticeDismiss");
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(text_, 1);
    layout->addWidget(accept_);
    layout->addWidget(dismiss);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::ToolTipBase);
    text_->setForegroundRole(QPalette::ToolTipText);
    // A click on a notice takes nobody out of his text.
    accept_->setFocusPolicy(Qt::TabFocus);
    dismiss->setFocusPolicy(Qt::TabFocus);
    connect(dismiss, &QPushButton::clicked, this, &NoticeBar::TakeOff);
    connect(accept_, &QPushButton::clicked, this, [this] {
        const std::function<void()> accepted = notices_.back().accepted;
        TakeOff();
        accepted();
    });
    hide();
}

void NoticeBar::Offer(Notice notice) {
    std::erase_if(notices_, [&](const Notice& other) { return other.subject == notice.subject; });
    notices_.push_back(std::move(notice));
    ShowLast();
}

void NoticeBar::Withdraw(const QString& subject) {
    if (std::erase_if(notices_, [&](const Notice& n) { return n.subject == subject; }) > 0)
        ShowLast();
}

void NoticeBar::Refresh() {
    if (std::erase_if(notices_, [](const Notice& n) { return n.holds && !n.holds(); }) > 0)
        ShowLast();
}

void NoticeBar::TakeOff() {
    const QWidget* focus = QApplication::focusWidget();
    const bool hadFocus = focus != nullptr && isAncestorOf(focus);
    notices_.pop_back();
    if (hadFocus) emit FocusLeft();
    ShowLast();
}

void NoticeBar::ShowLast() {
    setVisible(!notices_.empty());
    if (notices_.empty()) return;
    const Notice& notice = notices_.back();
    text_->setText(notice.text);
    accept_->setText(notice.button);
    accept_->setAccessibleDescription(notice.text);
    QAccessibleEvent event(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

}  // namespace zentro
