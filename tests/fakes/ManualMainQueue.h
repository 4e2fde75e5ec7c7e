#pragma once

#include "platform/MainQueue.h"

#include <map>
#include <mutex>
#include <optional>

/// A main queue on virtual time. Work runs only inside `advance`, `runPending` and `runNext`.
class ManualMainQueue final : public MainQueue
{
public:
    void async(std::function<void()> work) override
    {
        asyncAfter({}, std::move(work));
        onAsync();
    }

    WorkItem asyncAfter(std::chrono::milliseconds delay, std::function<void()> work) override
    {
        WorkItem item(std::move(work));
        const std::scoped_lock lock(m_mutex);
        m_items.emplace(m_now + delay, item);
        return item;
    }

    /// Advances the clock. Runs all work that becomes due, including new work, in order of time.
    void advance(std::chrono::milliseconds duration)
    {
        const auto end = m_now + duration;
        while (const auto item = next(end))
            item->run();
    }

    /// Runs all work that is due now.
    void runPending() { advance({}); }

    /// Runs the first work item that is due now, if any.
    void runNext()
    {
        if (const auto item = next(m_now))
            item->run();
    }

    /// Called at the end of `async`, on its thread.
    std::function<void()> onAsync = [] {};

private:
    /// Removes the next work item that is due by `end` and sets the clock to its time. None if
    /// there is no such item; the clock is then at `end`.
    std::optional<WorkItem> next(std::chrono::milliseconds end)
    {
        const std::scoped_lock lock(m_mutex);
        const auto first = m_items.begin();
        const bool isDue = first != m_items.end() && first->first <= end;
        m_now = isDue ? first->first : end;
        return isDue ? std::optional(m_items.extract(first).mapped()) : std::nullopt;
    }

    std::mutex m_mutex; // `async` is called on any thread
    std::chrono::milliseconds m_now {};
    std::multimap<std::chrono::milliseconds, WorkItem> m_items;
};
