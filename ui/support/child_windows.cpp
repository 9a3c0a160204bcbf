#include "ui/support/child_windows.h"

#include <QMdiSubWindow>

namespace zentro {

void CloseChildWindow(QWidget* window) {
    if (window == nullptr) return;
    QWidget* parent = window->parentWidget();
    if (!window->close()) return;
    if (qobject_cast<QMdiSubWindow*>(parent) != nullptr) {
        // Its content goes with it, later: it may be in the middle of telling something.
        parent->close();
        parent->deleteLater();
    } else {
        window->deleteLater();
    }
}

void FocusInto(QWidget& window) {
    if (window.focusProxy() != nullptr) return window.setFocus();
    if (QWidget* last = window.focusWidget()) return last->setFocus();
    for (QWidget* part = window.nextInFocusChain(); part != nullptr && part != &window;
         part = part->nextInFocusChain()) {
        const bool takesFocus = (part->focusPolicy() & Qt::TabFocus) != 0;
        if (takesFocus && part->isEnabled() && window.isAncestorOf(part)) return part->setFocus();
    }
    window.setFocus();
}

}  // namespace zentro
