#include "ui/support/child_windows.h"

#include <QMdiSubWindow>

namespace zentro {

void CloseChildWindow(QWidget* window) {
    if (window == nullptr) return;
    QWidget* parent = window->parentWidget();
    window->close();
    if (qobject_cast<QMdiSubWindow*>(parent) != nullptr) {
        // Its content goes with it, later: it may be in the middle of telling something.
        parent->close();
        parent->deleteLater();
    } else {
        window->deleteLater();
    }
}

}  // namespace zentro
