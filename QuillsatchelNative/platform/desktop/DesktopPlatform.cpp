#include "platform/desktop/DesktopPlatform.h"

#include "platform/Platform.h"
#include "platform/desktop/DBusDesktopSearch.h"
#include "platform/desktop/DesktopHttpClient.h"
#include "platform/desktop/DesktopSpeech.h"
#include "platform/desktop/DesktopStatusBar.h"
#include "platform/desktop/DesktopWorkspace.h"
#include "platform/desktop/QtMainQueue.h"
#include "platform/desktop/QtPasteboard.h"
#include "platform/desktop/StandardFileLocations.h"
#include "platform/desktop/SystemWallClock.h"
#include "platform/desktop/X11WindowSystem.h"

#include <QCoreApplication>

namespace
{

/// The implementations of the platform, in one object that the application owns.
struct Desktop final : QObject {
    explicit Desktop(QObject *application)
        : QObject(application)
    {
    }

    QtMainQueue mainQueue;
    SystemWallClock wallClock;
    QtPasteboard pasteboard;
    DesktopWorkspace workspace { mainQueue };
    StandardFileLocations fileLocations;
    X11WindowSystem windowSystem;
    DesktopStatusBar statusBar { mainQueue };
    DBusDesktopSearch desktopSearch;
    DesktopHttpClient httpClient { mainQueue };
    DesktopSpeech speech { mainQueue };
    Platform platform { mainQueue,    wallClock, pasteboard,    workspace,  fileLocations,
                        windowSystem, statusBar, desktopSearch, httpClient, speech };
};

} // namespace

Platform &desktopPlatform()
{
    static auto *const desktop = new Desktop(QCoreApplication::instance());
    return desktop->platform;
}
