#pragma once

#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>
#include <cstdio>

/// Prints a line once everything in the window has been painted for the first time, and ends the
/// program.
class FirstPaint : public QObject {
  public:
    explicit FirstPaint(QWidget& window) { window.installEventFilter(this); }

    bool eventFilter(QObject* window, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            window->removeEventFilter(this);
            QTimer::singleShot(0, qApp, [] {  // after what lies in the window
                std::puts("painted");
                std::fflush(stdout);
                QApplication::quit();
            });
        }
        return false;
    }
};
