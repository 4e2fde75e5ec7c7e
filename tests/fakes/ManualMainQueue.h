#pragma once

#include "platform/MainQueue.h"

#include <map>
#include <mutex>
#include <optional>

/// A main queue whose clock the test moves. Work runs only within `advance`, `runPending` and
/// `runNext`.
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

    /// Lets `duration` pass; work runs in the order in which it falls due, new work included.
    void advance(std::chrono::milliseconds duration)
    {
        const auto end = m_now + duration;
        while (const auto item = next(end))
            item->run();
    }

    /// Runs what is due already.
    void runPending() { advance({}); }

    /// Runs the first work that is due, and nothing that it leads to.
    void runNext()
    {
        if (const auto item = next(m_now))
            item->run();
    }

    /// `async` has taken work, on whatever thread, and is about to return.
    std::function<void()> onAsync = [] {};

private:
    /// What falls due next, the clock moved to then; none, and the clock at `end`, if that is
    /// later.
    std::optional<WorkItem> next(std::chrono::milliseconds end)
    {
        const std::scoped_lock lock(m_mutex);
        const auto first = m_items.begin();
        const bool isDue = first != m_items.end() && first->first <= end;
        m_now = isDue ? first->first : end;
        return isDue ? std::optional(m_items.extract(first).mapped()) : std::nullopt;
    }

    std::mutex m_mutex; // work comes from any thread
    std::chrono::milliseconds m_now {};
    std::multimap<std::chrono::milliseconds, WorkItem> m_items;
};
