#include "platform/desktop/StartupEnvironment.h"

#include <QByteArray>
#include <QtGlobal>

namespace StartupEnvironment
{

namespace
{

constexpr auto ActivationToken = "XDG_ACTIVATION_TOKEN";
constexpr auto StartupID = "DESKTOP_STARTUP_ID";

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

} // namespace StartupEnvironment
