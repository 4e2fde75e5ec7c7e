#pragma once

#include "platform/WorkItem.h"

#include <chrono>
#include <functional>

/// Runs work on the main thread, one item after the other.
class MainQueue
{
public:
    virtual ~MainQueue() = default;

    /// Runs `work` in a later iteration of the event loop, never within this call. May be called
    /// from any thread.
    virtual void async(std::function<void()> work) = 0;

    /// Runs `work` after `delay`. Main thread only.
    virtual WorkItem asyncAfter(std::chrono::milliseconds delay, std::function<void()> work) = 0;
};
