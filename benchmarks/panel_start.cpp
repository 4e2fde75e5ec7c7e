// The program as people start it, telling when its first frame stands.

#include "FirstFrame.h"
#include "app/AppDelegate.h"
#include "app/FloatingPanel.h"
#include "platform/desktop/FontPreload.h"
#include "platform/desktop/LaunchArguments.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    LaunchArguments arguments(argc, argv);
    const FontPreload fontPreload;
    QApplication application(arguments.count(), arguments.values());
    QApplication::setApplicationName(QStringLiteral("Quillsatchel"));
    AppDelegate delegate;
    delegate.applicationDidFinishLaunching();
    announceFirstFrame(*delegate.panel().windowHandle());
    return QApplication::exec();
}
