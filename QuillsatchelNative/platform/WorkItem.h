#pragma once

#include <functional>
#include <memory>
#include <utility>

/// A handle to delayed work in a `MainQueue`. Only `cancel` stops the work; destroying the handle
/// does not. Copies refer to the same work.
class WorkItem
{
public:
    /// No work; cancelling does nothing.
    WorkItem() = default;

    explicit WorkItem(std::function<void()> work)
        : m_work(std::make_shared<std::function<void()>>(std::move(work)))
    {
    }

    /// Does nothing once the work has started.
    void cancel()
    {
        if (m_work)
            *m_work = nullptr;
    }

    /// Runs the work unless it already ran or was cancelled.
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
