#include "platform/speech/ListenerRequest.h"

#include <algorithm>
#include <iterator>
#include <utility>

ListenerRequest::ListenerRequest(std::shared_ptr<const Wakeup> wakeup, std::size_t capacity)
    : m_wakeup(std::move(wakeup))
    , m_capacity(capacity)
{
}

void ListenerRequest::append(std::span<const std::int16_t> samples)
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_state != State::open)
            return;
        m_samples.insert(m_samples.end(), samples.begin(), samples.end());
        if (m_samples.size() > m_capacity) {
            m_state = State::overflowed;
            m_samples = {};
        }
    }
    m_wakeup->signal();
}

void ListenerRequest::endAudio()
{
    leaveOpenFor(State::ended);
}

void ListenerRequest::fail()
{
    leaveOpenFor(State::failed);
}

void ListenerRequest::leaveOpenFor(State state)
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_state != State::open)
            return;
        m_state = state;
    }
    m_wakeup->signal();
}

void ListenerRequest::close()
{
    {
        const std::lock_guard lock(m_mutex);
        m_state = State::closed;
        m_samples = {};
    }
    m_wakeup->signal();
}

std::vector<std::int16_t> ListenerRequest::take(std::size_t count)
{
    const std::lock_guard lock(m_mutex);
    std::vector<std::int16_t> taken(std::min(count, m_samples.size()));
    const auto end = std::next(m_samples.begin(), static_cast<std::ptrdiff_t>(taken.size()));
    std::copy(m_samples.begin(), end, taken.begin());
    m_samples.erase(m_samples.begin(), end);
    return taken;
}

ListenerRequest::State ListenerRequest::state() const
{
    const std::lock_guard lock(m_mutex);
    return m_state;
}

bool ListenerRequest::isEmpty() const
{
    const std::lock_guard lock(m_mutex);
    return m_samples.empty();
}
