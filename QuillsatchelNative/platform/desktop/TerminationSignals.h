#pragma once

#include "platform/desktop/SignalHandler.h"
#include "support/FileDescriptor.h"

#include <QSocketNotifier>

/// Quits the application with status 0 on SIGTERM and SIGINT. Needs the QCoreApplication. One
/// instance at a time.
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
