#pragma once

#include "platform/StartupToken.h"
#include "platform/desktop/InstanceBeacon.h"
#include "platform/desktop/InstanceLock.h"
#include "platform/desktop/InstanceSocket.h"

#include <chrono>
#include <optional>
#include <string>

/// Lets one process at a time use a folder; a later start shows that one's panel instead. It needs
/// no QApplication and reads nothing else in the folder, so a later start takes a few milliseconds.
/// It finds the first instance even after the folder or its lock file was deleted or replaced. A
/// crash or power cut never blocks the next start.
class SingleInstance
{
public:
    enum class Outcome {
        first,      // continue starting
        handedOver, // the first instance shows its panel: exit
        noAnswer,   // the first instance holds the folder but is stopped or hangs
    };

    /// `timeout`: how long to wait for a first instance that is starting, ending or busy.
    explicit SingleInstance(const std::string &folder,
                            std::chrono::milliseconds timeout = std::chrono::seconds(5));

    /// Becomes the first instance, or passes `token` to it. Also starts if the folder cannot be
    /// locked. Reports that, and a missing answer, on standard error.
    Outcome start(const StartupToken &token);

    /// Whether no other process uses the folder. False for a first instance that could not lock it.
    bool ownsFolder() const { return m_ownsFolder; }

    /// Whether the first instance may write to the folder. After the folder or lock file was
    /// replaced, locks the replacement; false while another process holds that.
    bool mayWrite();

    /// Where the first instance receives requests; null if it cannot.
    const InstanceSocket *socket() const { return m_socket ? &*m_socket : nullptr; }

private:
    InstanceLock::State takeLock();
    std::string requestNameOfFirst() const;
    void becomeFirst();

    std::chrono::milliseconds m_timeout;
    std::string m_folder;
    InstanceLock m_lock;
    InstanceLock::State m_state = InstanceLock::State::unavailable;
    InstanceBeacon m_beacon;
    std::optional<InstanceSocket> m_socket;
    bool m_ownsFolder = false;
};
