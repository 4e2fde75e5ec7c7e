#include "platform/PrivateBus.h"

#include "platform/TestDesktop.h"

#include <csignal>
#include <sys/prctl.h>

PrivateBus::PrivateBus()
    : m_previousAddress(qgetenv("DBUS_SESSION_BUS_ADDRESS"))
{
    const auto address = "unix:path=" + TestDesktop::path("bus").string();
    qputenv("DBUS_SESSION_BUS_ADDRESS", QByteArray::fromStdString(address));
    m_daemon.setStandardErrorFile(QProcess::nullDevice());
    m_daemon.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    m_daemon.start(QStringLiteral("dbus-daemon"),
                   { QStringLiteral("--session"), QStringLiteral("--nofork"),
                     QStringLiteral("--print-address"),
                     QStringLiteral("--address=") + QString::fromStdString(address) });
    m_daemon.waitForReadyRead(); // prints its address when it is ready
}

PrivateBus::~PrivateBus()
{
    qputenv("DBUS_SESSION_BUS_ADDRESS", m_previousAddress);
    m_daemon.kill();
    m_daemon.waitForFinished();
    // GIO returns the old connection until it has released it.
    TestDesktop::waitUntil([] {
        return !GObjectPointer<GDBusConnection>(
            g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
    });
}

BusApplication::BusApplication(const std::string &name, Answers answers)
    : m_answers(answers)
    , m_connection(g_dbus_connection_new_for_address_sync(
          qgetenv("DBUS_SESSION_BUS_ADDRESS").constData(),
          GDBusConnectionFlags(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                               G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
          nullptr, nullptr, nullptr))
{
    const auto filter = [](GDBusConnection *, GDBusMessage *message, gboolean isIncoming,
                           gpointer application) {
        return isIncoming ? static_cast<BusApplication *>(application)->receive(message) : message;
    };
    g_dbus_connection_add_filter(m_connection.get(), filter, this, nullptr);
    const CPointer<GVariant, &g_variant_unref> reply(g_dbus_connection_call_sync(
        m_connection.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
        "RequestName", g_variant_new("(su)", name.c_str(), 0U), nullptr, G_DBUS_CALL_FLAGS_NONE, -1,
        nullptr, nullptr));
}

BusApplication::~BusApplication()
{
    g_dbus_connection_close_sync(m_connection.get(), nullptr, nullptr);
}

std::vector<std::string> BusApplication::calls() const
{
    const std::scoped_lock lock(m_lock);
    return m_calls;
}

GDBusMessage *BusApplication::receive(GDBusMessage *message)
{
    if (g_dbus_message_get_message_type(message) != G_DBUS_MESSAGE_TYPE_METHOD_CALL)
        return message;
    const GText arguments(g_variant_print(g_dbus_message_get_body(message), FALSE));
    {
        const std::scoped_lock lock(m_lock);
        m_calls.push_back(std::string(g_dbus_message_get_path(message)) + ' ' +
                          g_dbus_message_get_interface(message) + '.' +
                          g_dbus_message_get_member(message) + arguments.get());
    }
    if (m_answers == Answers::always) {
        const GObjectPointer<GDBusMessage> reply(g_dbus_message_new_method_reply(message));
        g_dbus_connection_send_message(m_connection.get(), reply.get(),
                                       G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr, nullptr);
    }
    g_object_unref(message);
    return nullptr;
}
