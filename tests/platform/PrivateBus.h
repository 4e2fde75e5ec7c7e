#pragma once

#include "platform/gio/GObjectPointer.h"

#include <QProcess>
#include <gio/gio.h>

#include <mutex>
#include <string>
#include <vector>

/// A session bus of the test's own, which programs find by the environment while it exists.
class PrivateBus
{
public:
    PrivateBus();

    PrivateBus(const PrivateBus &) = delete;
    PrivateBus &operator=(const PrivateBus &) = delete;

    ~PrivateBus();

private:
    QProcess m_daemon;
    QByteArray m_addressBefore;
};

/// An application that is there on the bus, and notes what it is asked.
class BusApplication
{
public:
    enum class Answers {
        always,
        never
    };

    /// Can be called once this returns.
    explicit BusApplication(const std::string &name, Answers answers = Answers::always);

    BusApplication(const BusApplication &) = delete;
    BusApplication &operator=(const BusApplication &) = delete;

    ~BusApplication();

    /// Each as the object, the interface and the method, then the arguments as GVariant prints
    /// them.
    std::vector<std::string> calls() const;

private:
    GDBusMessage *receive(GDBusMessage *message);

    Answers m_answers;
    mutable std::mutex m_lock; // calls arrive on another thread
    std::vector<std::string> m_calls;
    GObjectPointer<GDBusConnection> m_connection;
};
