// What bench/start_up compares the main window with: a window with a menu and nothing else, in a
// program that loads no library besides Qt's.

#include <QMainWindow>
#include <QMenuBar>

#include "bench/first_paint.h"

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QMainWindow window;
    window.menuBar()->addMenu("&File")->addAction("E&xit");
    const FirstPaint paint(window);
    window.resize(1200, 800);
    window.show();
    return QApplication::exec();
}
