#pragma once

#include "platform/desktop/SignalHandler.h"
#include "support/FileDescriptor.h"

#include <QSocketNotifier>

/// Ends the application in order, with status 0, when the system or the shell asks it to end
/// (SIGTERM, SIGINT). Needs the QCoreApplication. One at a time.
class TerminationSignals
{
public:
    TerminationSignals();

private:
    FileDescriptor m_event;
    QSocketNotifier m_notifier;
    SignalHandler m_terminate;
    SignalHandler m_interrupt;
};
