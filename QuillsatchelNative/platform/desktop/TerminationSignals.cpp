#include "platform/desktop/TerminationSignals.h"

#include <QCoreApplication>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <sys/eventfd.h>

namespace
{

std::atomic<int> raisedEvent = -1;

// Only async-signal-safe calls are allowed here.
void raiseEvent(int /*signal*/)
{
    const int savedErrno = errno;
    eventfd_write(raisedEvent, 1);
    errno = savedErrno;
}

} // namespace

TerminationSignals::TerminationSignals()
    : m_event(raisedEvent = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
    , m_notifier(m_event.number(), QSocketNotifier::Read)
    , m_terminate(SIGTERM, &raiseEvent)
    , m_interrupt(SIGINT, &raiseEvent)
{
    QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier, [this] {
        eventfd_t count = 0;
        eventfd_read(m_event.number(), &count);
        QCoreApplication::exit(0);
    });
}
