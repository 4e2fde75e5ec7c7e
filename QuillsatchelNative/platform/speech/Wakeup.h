#pragma once

#include "support/FileDescriptor.h"

/// Lets any thread wake one that waits in `poll`; never blocks.
class Wakeup
{
public:
    Wakeup();

    /// Readable from `signal` to `clear`; -1 if the process has no descriptor left.
    int descriptor() const { return m_event.number(); }

    void signal() const;
    void clear() const;

private:
    FileDescriptor m_event;
};
