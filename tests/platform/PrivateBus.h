#pragma once

#include "platform/gio/GObjectPointer.h"

#include <QProcess>
#include <gio/gio.h>

#include <mutex>
#include <string>
#include <vector>

/// A private session bus, which the environment names while it exists.
class PrivateBus
{
public:
    PrivateBus();

    PrivateBus(const PrivateBus &) = delete;
    PrivateBus &operator=(const PrivateBus &) = delete;

    ~PrivateBus();

private:
    QProcess m_daemon;
    QByteArray m_previousAddress;
};

/// An application on the bus that records its method calls.
class BusApplication
{
public:
    enum class Answers {
        always,
        never
    };

    /// Accepts calls once this returns.
    explicit BusApplication(const std::string &name, Answers answers = Answers::always);

    BusApplication(const BusApplication &) = delete;
    BusApplication &operator=(const BusApplication &) = delete;

    ~BusApplication();

    /// Each as object, interface, method and the arguments printed by GVariant.
    std::vector<std::string> calls() const;

private:
    GDBusMessage *receive(GDBusMessage *message);

    Answers m_answers;
    mutable std::mutex m_lock; // calls arrive on another thread
    std::vector<std::string> m_calls;
    GObjectPointer<GDBusConnection> m_connection;
};
