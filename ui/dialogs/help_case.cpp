#include "ui/dialogs/help_case.h"

#include <QAccessible>
#include <QEvent>
#include <algorithm>

#include "ui/support/colours.h"

namespace zentro {

namespace {

QString Paragraph(const QString& html) {
    return "<p style='margin: 0 0 4px 0'>" + html + "</p>";
}

/// Behind what it is, as there may be little room.
QString CodeLine(const QString& caption, const QString& text) {
    return Paragraph("<b>" + caption + "</b> <code style='white-space: pre-wrap'>" +
                     text.trimmed().toHtmlEscaped() + "</code>");
}

}  // namespace

HelpCase::HelpCase(QWidget* parent) : QLabel(parent) {
    setObjectName("lblOwnCase");
    setAccessibleName(tr("Your own line"));
    setTextFormat(Qt::RichText);
    setWordWrap(true);
    setMargin(6);
    setFrameStyle(QFrame::StyledPanel);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setAutoFillBackground(true);
    Colour();
    hide();
}

void HelpCase::Show(const OwnCase& ownCase) {
    QString text = CodeLine(tr("Line %1 of your program:").arg(ownCase.line), ownCase.text) +
                   Paragraph(ownCase.hint.toHtmlEscaped());
    if (!ownCase.mended.isEmpty()) text += CodeLine(tr("The line then:"), ownCase.mended);
    setText(text);
    show();
    KeepHeight();
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void HelpCase::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    KeepHeight();
}

/// A text that wraps says how high it is only when it is known how wide it is.
void HelpCase::KeepHeight() {
    constexpr int kMostShare = 3;  // of the help window
    setMinimumHeight(std::min(heightForWidth(width()), parentWidget()->height() / kMostShare));
}

void HelpCase::Clear() {
    clear();
    hide();
}

void HelpCase::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::ApplicationPaletteChange) Colour();
}

/// A shade apart from the page, light or dark.
void HelpCase::Colour() {
    constexpr int kShare = 12;  // in hundredths
    QPalette own;
    own.setColor(QPalette::Window,
                 Mix(own.color(QPalette::Highlight), own.color(QPalette::Base), kShare));
    own.setColor(QPalette::WindowText, own.color(QPalette::Text));
    setPalette(own);
}

}  // namespace zentro
