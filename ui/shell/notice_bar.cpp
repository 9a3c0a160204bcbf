#include "ui/shell/notice_bar.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace zentro {

NoticeBar::NoticeBar(QWidget* parent)
    : QWidget(parent), text_(new QLabel(this)), accept_(new QPushButton(this)) {
    setObjectName("noticeBar");
    text_->setWordWrap(true);
    auto* dismiss = new QPushButton("&Not Now", this);
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(text_, 1);
    layout->addWidget(accept_);
    layout->addWidget(dismiss);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::ToolTipBase);
    text_->setForegroundRole(QPalette::ToolTipText);
    connect(dismiss, &QPushButton::clicked, this, &QWidget::hide);
    connect(accept_, &QPushButton::clicked, this, [this] {
        hide();
        accepted_();
    });
    hide();
}

void NoticeBar::Offer(const QString& text, const QString& button, std::function<void()> accepted) {
    text_->setText(text);
    accept_->setText(button);
    accept_->setAccessibleDescription(text);
    accepted_ = std::move(accepted);
    show();
    QAccessibleEvent event(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

}  // namespace zentro
