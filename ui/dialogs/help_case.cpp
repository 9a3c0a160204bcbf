#include "ui/dialogs/help_case.h"

#include <QAccessible>
#include <QEvent>

#include "ui/support/colours.h"

namespace zentro {

namespace {

QString Paragraph(const QString& text) {
    return "<p>" + text.toHtmlEscaped() + "</p>";
}

QString CodeLine(const QString& text) {
    return "<pre style='white-space: pre-wrap; margin-left: 24px'>" +
           text.trimmed().toHtmlEscaped() + "</pre>";
}

}  // namespace

HelpCase::HelpCase(QWidget* parent) : QLabel(parent) {
    setObjectName("lblOwnCase");
    setAccessibleName(tr("Your own line"));
    setTextFormat(Qt::RichText);
    setWordWrap(true);
    setMargin(10);
    setFrameStyle(QFrame::StyledPanel);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setAutoFillBackground(true);
    Colour();
    hide();
}

void HelpCase::Show(const OwnCase& ownCase) {
    QString text = "<p><b>" + tr("Line %1 of your program:").arg(ownCase.line) + "</b></p>" +
                   CodeLine(ownCase.text) + Paragraph(ownCase.hint);
    if (!ownCase.mended.isEmpty())
        text += Paragraph(tr("The line then:")) + CodeLine(ownCase.mended);
    setText(text);
    show();
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
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
