#pragma once

#include <QPointer>

class QWidget;

namespace zentro {

/// Closes a child window of the frame together with its own frame, without a question.
void CloseChildWindow(QWidget* window);

template <typename Window>
void CloseChild(QPointer<Window>& window) {
    CloseChildWindow(window);
    window.clear();
}

}  // namespace zentro
