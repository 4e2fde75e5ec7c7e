#pragma once

#include "platform/MainQueue.h"

#include <map>

/// A main queue whose clock the test moves. Nothing runs but within `advance` and `runPending`.
class ManualMainQueue final : public MainQueue
{
public:
    void async(std::function<void()> work) override { asyncAfter({}, std::move(work)); }

    WorkItem asyncAfter(std::chrono::milliseconds delay, std::function<void()> work) override
    {
        WorkItem item(std::move(work));
        m_items.emplace(m_now + delay, item);
        return item;
    }

    /// Lets `duration` pass; work runs in the order in which it falls due, new work included.
    void advance(std::chrono::milliseconds duration)
    {
        const auto end = m_now + duration;
        while (!m_items.empty() && m_items.begin()->first <= end) {
            const auto next = m_items.extract(m_items.begin());
            m_now = next.key();
            next.mapped().run();
        }
        m_now = end;
    }

    /// Runs what is due already.
    void runPending() { advance({}); }

private:
    std::chrono::milliseconds m_now {};
    std::multimap<std::chrono::milliseconds, WorkItem> m_items;
};
