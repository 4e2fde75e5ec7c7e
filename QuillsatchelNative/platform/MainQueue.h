#pragma once

#include "platform/WorkItem.h"

#include <chrono>
#include <functional>

/// The queue of the main thread: what is put here runs there, one piece of work after the other.
class MainQueue
{
public:
    virtual ~MainQueue() = default;

    /// Runs `work` on the next turn, never within this call. May be called from any thread.
    virtual void async(std::function<void()> work) = 0;

    /// Runs `work` once `delay` has passed. Main thread only.
    virtual WorkItem asyncAfter(std::chrono::milliseconds delay, std::function<void()> work) = 0;
};
