#include "ui/support/spoken_label.h"

#include <QCoreApplication>
#include <QLabel>

namespace zentro {

void SayWithCaption(QLabel& label, const QString& caption) {
    const QString text = label.text().simplified();
    const QString said =
        text.isEmpty() ? caption
                       : QCoreApplication::translate("SpokenLabel", "%1: %2").arg(caption, text);
    if (label.accessibleName() != said) label.setAccessibleName(said);
}

}  // namespace zentro
