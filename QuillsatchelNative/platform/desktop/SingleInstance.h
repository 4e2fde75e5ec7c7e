#pragma once

#include "platform/StartupToken.h"
#include "platform/desktop/InstanceLock.h"
#include "platform/desktop/InstanceSocket.h"

#include <chrono>
#include <optional>
#include <string>

/// Sees to it that one process at a time works on a folder, and that a further start brings that
/// one forward instead. Decided before there is a QApplication, and without reading anything else
/// in the folder, so that such a start takes some milliseconds. What ended without a word, by a
/// crash or a power cut, keeps nobody from starting.
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

    /// Where the first one hears of further starts; null if it cannot.
    const InstanceSocket *socket() const { return m_socket ? &*m_socket : nullptr; }

private:
    void own();

    std::chrono::milliseconds m_patience;
    std::string m_folder;
    InstanceLock m_lock;
    std::optional<InstanceSocket> m_socket;
    bool m_ownsFolder = false;
};
