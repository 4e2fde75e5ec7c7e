#pragma once

#include "platform/StartupToken.h"
#include "platform/desktop/InstanceBeacon.h"
#include "platform/desktop/InstanceLock.h"
#include "platform/desktop/InstanceSocket.h"

#include <chrono>
#include <optional>
#include <string>

/// One process at a time works on a folder; a further start brings that one forward instead.
/// Decided before there is a QApplication, and without reading anything else in the folder, so that
/// such a start takes a few milliseconds. A further start also finds the first one after the folder
/// or its lock file was deleted or replaced. A crash or power cut never blocks the next start.
class SingleInstance
{
public:
    enum class Outcome {
        first,      // go on
        handedOver, // the first one comes forward; there is nothing left to do
        noAnswer,   // the first one holds the folder, but is stopped or hangs
    };

    /// `patience` is how long a first one is waited for that is just starting, ending or busy.
    explicit SingleInstance(const std::string &folder,
                            std::chrono::milliseconds patience = std::chrono::seconds(5));

    /// Becomes the first, or hands `token` over to it. A folder that cannot be locked keeps nobody
    /// from starting either; that, and a missing answer, is said on standard error.
    Outcome start(const StartupToken &token);

    /// Whether no other process works on the folder. False for a first one that could not lock it.
    bool ownsFolder() const { return m_ownsFolder; }

    /// Whether the first one may write in the folder: false while another process has its lock,
    /// which takes a replaced folder or lock file. Locks the replacement if no other process has.
    bool mayWrite();

    /// Where the first one hears of further starts; null if it cannot.
    const InstanceSocket *socket() const { return m_socket ? &*m_socket : nullptr; }

private:
    InstanceLock::State takeLock();
    std::string nameOfFirst() const;
    void own();

    std::chrono::milliseconds m_patience;
    std::string m_folder;
    InstanceLock m_lock;
    InstanceLock::State m_state = InstanceLock::State::unavailable;
    InstanceBeacon m_beacon;
    std::optional<InstanceSocket> m_socket;
    bool m_ownsFolder = false;
};
