#include "platform/desktop/QtFailures.h"

#include <QByteArray>
#include <QString>

#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>

namespace
{

QtMessageHandler previousHandler = nullptr;

[[noreturn]] void fail(const std::string &reason)
{
    std::cerr << "Quillsatchel ends: " << reason << std::endl;
    std::_Exit(EXIT_FAILURE);
}

std::string setting(const char *variable)
{
    const QByteArray value = qgetenv(variable);
    return variable + (value.isEmpty() ? std::string(" is not set") : " is " + value.toStdString());
}

// Qt also reports platform plugins that fail before it finds one that works, and Qt's Wayland
// plugin reports a failed connection without a category.
bool isFromPlatformPlugin(std::string_view category, const QString &message)
{
    return category.starts_with("qt.qpa") ||
           message.startsWith(QLatin1String("Failed to create wl_display"));
}

void handle(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (message.startsWith(QLatin1String("QThread::start: Thread creation error")))
        fail("the system allows it no more threads.");
    const std::string_view category = context.category ? context.category : "";
    if (type == QtFatalMsg && message.contains(QLatin1String("platform plugin")))
        fail("there is no display. " + setting("DISPLAY") + ", " + setting("WAYLAND_DISPLAY") +
             ".");
    if (type == QtFatalMsg || !isFromPlatformPlugin(category, message))
        previousHandler(type, context, message);
}

} // namespace

QtFailures::QtFailures()
    : m_previous(previousHandler = qInstallMessageHandler(&handle))
{
}

QtFailures::~QtFailures()
{
    qInstallMessageHandler(m_previous);
}
