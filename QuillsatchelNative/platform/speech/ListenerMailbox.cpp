#include "platform/speech/ListenerMailbox.h"

#include <utility>

bool ListenerMailbox::put(std::shared_ptr<ListenerJob> job)
{
    bool needsThread = false;
    {
        const std::lock_guard lock(m_mutex);
        std::swap(m_job, job);
        needsThread = !std::exchange(m_hasThread, true);
    }
    if (job)
        job->fail();
    m_wakeup->signal();
    return needsThread;
}

std::shared_ptr<ListenerJob> ListenerMailbox::take()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_job, nullptr);
}

void ListenerMailbox::close()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isClosed = true;
    }
    m_wakeup->signal();
}

bool ListenerMailbox::isClosed() const
{
    const std::lock_guard lock(m_mutex);
    return m_isClosed;
}

bool ListenerMailbox::leave()
{
    const std::lock_guard lock(m_mutex);
    m_hasThread = m_job && !m_isClosed;
    return !m_hasThread;
}
