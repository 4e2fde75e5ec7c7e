#include "platform/desktop/StartupEnvironment.h"

#include <QByteArray>
#include <QtGlobal>

namespace StartupEnvironment
{

namespace
{

constexpr auto ActivationToken = "XDG_ACTIVATION_TOKEN";
constexpr auto StartupID = "DESKTOP_STARTUP_ID";
constexpr auto DataHome = "XDG_DATA_HOME";

} // namespace

StartupToken token()
{
    return { .activationToken = qgetenv(ActivationToken).toStdString(),
             .startupID = qgetenv(StartupID).toStdString() };
}

void clear()
{
    qunsetenv(ActivationToken);
    qunsetenv(StartupID);
}

void removeRelativeDataHome()
{
    if (!qgetenv(DataHome).startsWith('/'))
        qunsetenv(DataHome);
}

} // namespace StartupEnvironment
