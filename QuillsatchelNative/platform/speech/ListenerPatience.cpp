#include "platform/speech/ListenerPatience.h"

ListenerPatience::ListenerPatience(const ListenerLimits &limits, Time now)
    : m_limits(limits)
    , m_lastProgress(now)
    , m_idleSince(now)
{
}

void ListenerPatience::beginTask()
{
    m_hasTask = true;
}

void ListenerPatience::endTask(Time now)
{
    m_hasTask = false;
    m_idleSince = now;
}

void ListenerPatience::ask(Time now)
{
    if (m_openQuestions++ == 0)
        m_lastProgress = now;
}

void ListenerPatience::receiveAnswer(Time now)
{
    --m_openQuestions;
    m_lastProgress = now;
}

std::optional<ListenerPatience::Time> ListenerPatience::deadline() const
{
    if (m_openQuestions > 0)
        return m_lastProgress + m_limits.answer;
    if (!m_hasTask)
        return m_idleSince + m_limits.idle;
    return std::nullopt;
}
