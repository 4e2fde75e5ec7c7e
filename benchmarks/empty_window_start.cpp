// The cost of a minimal Qt program with a tray icon: a window of the panel's size with a line of
// text per argument, each in another font size. Prints the time of the first frame.

#include "FirstFrame.h"

#include <QApplication>
#include <QFont>
#include <QLabel>
#include <QMenu>
#include <QSystemTrayIcon>
#include <QWidget>

namespace
{

void addLine(QWidget &window, int line, const QString &text)
{
    constexpr int Smallest = 10;
    constexpr int Height = 30;
    auto *const label = new QLabel(text, &window);
    QFont font = label->font();
    font.setPixelSize(Smallest + line);
    label->setFont(font);
    label->move(0, line * Height);
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QWidget window;
    window.resize(430, 650);
    for (int line = 1; line < argc; ++line)
        addLine(window, line, QString::fromLocal8Bit(argv[line]));
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
