// What any Qt program costs: an empty window of the panel's size, or one with the text that is
// given, telling when its first frame stands.

#include "FirstFrame.h"

#include <QApplication>
#include <QLabel>
#include <QWidget>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QWidget window;
    window.resize(430, 650);
    if (argc > 1)
        new QLabel(QString::fromLocal8Bit(argv[1]), &window);
    window.show();
    announceFirstFrame(*window.windowHandle());
    return QApplication::exec();
}
