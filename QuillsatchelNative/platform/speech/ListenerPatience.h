#pragma once

#include "platform/speech/ListenerLimits.h"

#include <chrono>
#include <cstddef>
#include <optional>

/// How long a listener is kept: until it owes an answer for too long, or has had no task for long.
class ListenerPatience
{
public:
    using Time = std::chrono::steady_clock::time_point;

    /// A listener that has no task yet.
    ListenerPatience(const ListenerLimits &limits, Time now);

    void beginTask();
    void endTask(Time now);
    void ask(Time now);
    /// The oldest question is answered.
    void receiveAnswer(Time now);

    /// When it is over, unless something happens before; none while a task waits for audio.
    std::optional<Time> deadline() const;

private:
    ListenerLimits m_limits;
    std::size_t m_openQuestions = 0;
    bool m_hasTask = false;
    Time m_lastProgress; // of an answer, or of a first question
    Time m_idleSince;
};
