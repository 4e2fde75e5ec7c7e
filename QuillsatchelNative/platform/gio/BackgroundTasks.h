#pragma once

#include <chrono>
#include <functional>
#include <future>
#include <vector>

/// Work on threads that are there only while they work. Not Qt's threads: what GLib has to say
/// later it would leave there with an event loop that nobody runs.
class BackgroundTasks
{
public:
    BackgroundTasks() = default;

    BackgroundTasks(const BackgroundTasks &) = delete;
    BackgroundTasks &operator=(const BackgroundTasks &) = delete;

    /// Waits for all that was started.
    ~BackgroundTasks() = default;

    /// Returns at once. Nothing is done where no thread can be had.
    void start(std::function<void()> task);

    /// Waits for all that was started, but not for longer than this.
    void waitFor(std::chrono::milliseconds duration) const;

private:
    std::vector<std::future<void>> m_tasks; // each waits for its end when it is destroyed
};
