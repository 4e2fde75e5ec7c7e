#include "app/AppDelegate.h"
#include "platform/desktop/FontPreload.h"
#include "platform/desktop/LaunchArguments.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    LaunchArguments arguments(argc, argv);
    const FontPreload fontPreload;
    QApplication application(arguments.count(), arguments.values());
    QApplication::setApplicationName(QStringLiteral("Quillsatchel"));
    QApplication::setDesktopFileName(QStringLiteral("example.quillsatchel.Quillsatchel"));
    AppDelegate delegate;
    delegate.applicationDidFinishLaunching();
    return QApplication::exec();
}
