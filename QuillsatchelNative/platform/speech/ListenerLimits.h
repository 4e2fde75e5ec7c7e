#pragma once

#include <chrono>
#include <cstddef>

/// Timeouts of a listener, and how much audio may wait for it.
struct ListenerLimits {
    /// Answer timeout, after which the listener is stopped. Includes loading a model from a slow
    /// disk.
    std::chrono::milliseconds answer = std::chrono::seconds(15);
    /// Idle timeout, after which the listener is stopped to free its memory.
    std::chrono::milliseconds idle = std::chrono::minutes(5);
    /// Samples that may wait: one minute. Exceeded only by machines too slow for dictation.
    std::size_t queuedSamples = 60 * 16'000;
};
