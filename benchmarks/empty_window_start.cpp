// What any Qt program with an icon in the tray costs: an empty window of the panel's size, or one
// with the text that is given, telling when its first frame stands.

#include "FirstFrame.h"

#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QSystemTrayIcon>
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

    QPixmap square(22, 22);
    square.fill(Qt::red);
    QSystemTrayIcon icon { QIcon(square) };
    QMenu menu;
    menu.addAction(QStringLiteral("Quit"));
    icon.setContextMenu(&menu);
    icon.show();
    return QApplication::exec();
}
