#pragma once

#include <functional>
#include <memory>
#include <utility>

/// Work handed to a `MainQueue` for later. Letting go of the item lets the work run all the same;
/// only `cancel` stops it. Copies stand for the same work.
class WorkItem
{
public:
    /// No work: cancelling it does nothing.
    WorkItem() = default;

    explicit WorkItem(std::function<void()> work)
        : m_work(std::make_shared<std::function<void()>>(std::move(work)))
    {
    }

    /// Work that has not begun never runs. Does nothing once it has run.
    void cancel()
    {
        if (m_work)
            *m_work = nullptr;
    }

    /// For queues: runs the work, at most once.
    void run() const
    {
        if (!m_work)
            return;
        if (const auto work = std::exchange(*m_work, nullptr))
            work();
    }

private:
    std::shared_ptr<std::function<void()>> m_work;
};
