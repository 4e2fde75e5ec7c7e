#include "app/AppDelegate.h"
#include "platform/desktop/FontPreload.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    // Wayland lets no program stay above the others or on all desktops; through XWayland, where
    // it is there, the panel can do both.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "xcb;wayland");
    const FontPreload fontPreload;
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Quillsatchel"));
    AppDelegate delegate;
    delegate.applicationDidFinishLaunching();
    return QApplication::exec();
}
