#include "app/AppDelegate.h"
#include "app/FloatingPanel.h"
#include "platform/ApplicationFolder.h"
#include "platform/desktop/FontPreload.h"
#include "platform/desktop/InstanceListener.h"
#include "platform/desktop/LaunchArguments.h"
#include "platform/desktop/ProcessEnd.h"
#include "platform/desktop/SingleInstance.h"
#include "platform/desktop/StandardFileLocations.h"
#include "platform/desktop/StartupEnvironment.h"
#include "platform/desktop/TerminalDetachment.h"
#include "platform/desktop/TerminationSignals.h"
#include "support/WholeFile.h"

#include <QApplication>
#include <QFile>

#include <cstdlib>

int main(int argc, char *argv[])
{
    const TerminalDetachment terminalDetachment;
    const QString folder = prepareApplicationFolder(StandardFileLocations());
    SingleInstance instance(QFile::encodeName(folder).toStdString());
    const auto outcome = instance.start(StartupEnvironment::token());
    if (outcome != SingleInstance::Outcome::first)
        return outcome == SingleInstance::Outcome::handedOver ? EXIT_SUCCESS : EXIT_FAILURE;

    LaunchArguments arguments(argc, argv);
    const FontPreload fontPreload;
    QApplication application(arguments.count(), arguments.values());
    QApplication::setApplicationName(QStringLiteral("Quillsatchel"));
    QApplication::setDesktopFileName(QStringLiteral("example.quillsatchel.Quillsatchel"));
    if (instance.ownsFolder())
        for (const auto *const name : { "", "/Favicons" })
            WholeFile::removeUnfinished(folder + QLatin1String(name));

    const TerminationSignals terminationSignals;
    AppDelegate delegate;
    const auto terminate = [&delegate] { delegate.applicationWillTerminate(); };
    const ProcessEnd processEnd(terminate);
    QObject::connect(&application, &QGuiApplication::commitDataRequest, &application, terminate);

    delegate.applicationDidFinishLaunching();
    StartupEnvironment::clear();
    const InstanceListener listener(instance, [&delegate](const StartupToken &token) {
        delegate.showPanel();
        desktopPlatform().windowSystem.activate(*delegate.panel().windowHandle(), token);
    });
    return QApplication::exec();
}
