#include "platform/speech/Wakeup.h"

#include <sys/eventfd.h>

Wakeup::Wakeup()
    : m_event(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
}

void Wakeup::signal() const
{
    eventfd_write(m_event.number(), 1);
}

void Wakeup::clear() const
{
    eventfd_t count = 0;
    eventfd_read(m_event.number(), &count);
}
