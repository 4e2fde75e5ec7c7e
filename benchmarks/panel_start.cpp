// The complete program, which prints the time of its first frame.

#include "FirstFrame.h"
#include "Panels.h"
#include "app/AppDelegate.h"
#include "app/EmojiFont.h"
#include "app/PanelApplication.h"
#include "platform/ApplicationFolder.h"
#include "platform/desktop/DesktopPlatform.h"
#include "platform/desktop/DesktopScale.h"
#include "platform/desktop/FontPreload.h"
#include "platform/desktop/InstanceListener.h"
#include "platform/desktop/LaunchArguments.h"
#include "platform/desktop/SingleInstance.h"
#include "platform/desktop/StandardFileLocations.h"
#include "platform/desktop/StartupEnvironment.h"
#include "support/FilePath.h"

#include <cstdlib>

int main(int argc, char *argv[])
{
    const QString folder = prepareApplicationFolder(StandardFileLocations());
    SingleInstance instance(FilePath::native(folder));
    if (instance.start(StartupEnvironment::token()) != SingleInstance::Outcome::first)
        return EXIT_FAILURE;

    LaunchArguments arguments(argc, argv);
    DesktopScale::prepare();
    FontPreload fontPreload;
    const PanelApplication application(arguments.count(), arguments.values());
    DesktopScale::clear();
    PanelApplication::setApplicationName(QStringLiteral("Quillsatchel"));
    AppDelegate delegate(desktopPlatform());
    EmojiFont::apply(fontPreload.colorEmojiFamily(), &FontPreload::realFamily);
    delegate.applicationDidFinishLaunching();
    announceFirstFrame(*panels().constFirst()->windowHandle());
    const InstanceListener listener(
        instance, [&delegate](const StartupToken &token) { delegate.showPanel(token); });
    return PanelApplication::exec();
}
