// What any Qt program costs: an empty window of the panel's size, telling when its first frame
// stands.

#include "FirstFrame.h"

#include <QApplication>
#include <QWidget>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QWidget window;
    window.resize(430, 650);
    window.show();
    announceFirstFrame(*window.windowHandle());
    return QApplication::exec();
}
