#pragma once

#include <chrono>
#include <functional>
#include <future>
#include <vector>

/// Runs each task on a thread that ends with it. Not Qt's threads: GLib would leave later events to
/// their event loop, which never runs.
class BackgroundTasks
{
public:
    BackgroundTasks() = default;

    BackgroundTasks(const BackgroundTasks &) = delete;
    BackgroundTasks &operator=(const BackgroundTasks &) = delete;

    /// Waits for all tasks.
    ~BackgroundTasks() = default;

    /// Returns immediately. Does nothing if the system refuses a thread.
    void start(std::function<void()> task);

    /// Waits for all tasks, for at most `duration`.
    void waitFor(std::chrono::milliseconds duration) const;

private:
    std::vector<std::future<void>> m_tasks; // each one's destructor waits for its task
};
