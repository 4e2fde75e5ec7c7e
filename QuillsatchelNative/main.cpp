#include "app/AppDelegate.h"
#include "app/EmojiFont.h"
#include "app/PanelApplication.h"
#include "platform/ApplicationFolder.h"
#include "platform/Platform.h"
#include "platform/desktop/ClipboardHandover.h"
#include "platform/desktop/DesktopPlatform.h"
#include "platform/desktop/DesktopScale.h"
#include "platform/desktop/FontPreload.h"
#include "platform/desktop/InstanceListener.h"
#include "platform/desktop/LaunchArguments.h"
#include "platform/desktop/QtFailures.h"
#include "platform/desktop/SignalHandler.h"
#include "platform/desktop/SingleInstance.h"
#include "platform/desktop/StandardFileLocations.h"
#include "platform/desktop/StartupEnvironment.h"
#include "platform/desktop/TerminalDetachment.h"
#include "platform/desktop/TerminationSignals.h"
#include "support/FilePath.h"
#include "support/UnfinishedFile.h"

#include <csignal>
#include <cstdlib>

namespace
{

/// Shows the panel and runs the event loop. Frees everything before it returns.
int run(SingleInstance &instance, FontPreload &fontPreload)
{
    const TerminationSignals terminationSignals;
    StandardFileLocations fileLocations(&instance);
    const auto &desktop = desktopPlatform();
    Platform platform { desktop.mainQueue, desktop.wallClock,     desktop.pasteboard,
                        desktop.workspace, fileLocations,         desktop.windowSystem,
                        desktop.statusBar, desktop.desktopSearch, desktop.httpClient,
                        desktop.speech };
    AppDelegate delegate(platform);
    EmojiFont::apply(fontPreload.colorEmojiFamily(), &FontPreload::realFamily);
    delegate.applicationDidFinishLaunching();
    StartupEnvironment::clear();
    DesktopScale::clear();
    const InstanceListener listener(
        instance, [&delegate](const StartupToken &token) { delegate.showPanel(token); });
    return PanelApplication::exec();
}

} // namespace

int main(int argc, char *argv[])
{
    const TerminalDetachment terminalDetachment;
    // Exceeding the file size limit then fails the save instead of killing the program. A handler
    // because programs we start would inherit SIG_IGN.
    const SignalHandler fileSizeExceeded(SIGXFSZ, [](int) {});
    StartupEnvironment::removeRelativeDataHome();
    const QString folder = prepareApplicationFolder(StandardFileLocations());
    SingleInstance instance(FilePath::native(folder));
    const auto outcome = instance.start(StartupEnvironment::token());
    if (outcome != SingleInstance::Outcome::first)
        return outcome == SingleInstance::Outcome::handedOver ? EXIT_SUCCESS : EXIT_FAILURE;

    const QtFailures qtFailures;
    LaunchArguments arguments(argc, argv);
    DesktopScale::prepare();
    FontPreload fontPreload;
    const PanelApplication application(arguments.count(), arguments.values());
    PanelApplication::setApplicationName(QStringLiteral("Quillsatchel"));
    PanelApplication::setDesktopFileName(QStringLiteral("example.quillsatchel.Quillsatchel"));
    if (instance.ownsFolder())
        for (const auto *const name : { "", "/Favicons" })
            UnfinishedFile::removeLeftovers(FilePath::native(folder + QLatin1String(name)));

    const int status = run(instance, fontPreload);
    ClipboardHandover::finish();
    return status;
}
