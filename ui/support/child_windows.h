#pragma once

#include <QPointer>

class QWidget;

namespace zentro {

/// Closes a child window of the frame together with its own frame, unless the window refuses.
void CloseChildWindow(QWidget* window);

/// Gives the focus to the part of the window that had it last, or else to the first that takes it.
void FocusInto(QWidget& window);

template <typename Window>
void CloseChild(QPointer<Window>& window) {
    CloseChildWindow(window);
    window.clear();
}

}  // namespace zentro
