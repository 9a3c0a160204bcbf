#include "ui/support/spoken_label.h"

#include <QCoreApplication>
#include <QLabel>

namespace zentro {

void SayWithCaption(QLabel& label, const QString& caption) {
    SayWithCaption(label, caption, label.text());
}

void SayWithCaption(QLabel& label, const QString& caption, const QString& text) {
    const QString words = text.simplified();
    const QString said =
        words.isEmpty() ? caption
                        : QCoreApplication::translate("SpokenLabel", "%1: %2").arg(caption, words);
    if (label.accessibleName() != said) label.setAccessibleName(said);
}

}  // namespace zentro
