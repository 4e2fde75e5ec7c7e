#pragma once

#include <chrono>
#include <cstddef>

/// How long a listener may take, and how much may wait for it.
struct ListenerLimits {
    /// A listener that owes an answer for so long hangs. Loading a model from a slow disk counts.
    std::chrono::milliseconds answer = std::chrono::seconds(15);
    /// A listener with nothing to do for so long is ended, which gives back its memory.
    std::chrono::milliseconds idle = std::chrono::minutes(5);
    /// Samples that may wait; a machine too slow for dictation gets there: a minute.
    std::size_t queuedSamples = 60 * 16'000;
};
