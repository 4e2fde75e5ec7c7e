#include "platform/gio/BackgroundTasks.h"

#include <system_error>
#include <utility>

void BackgroundTasks::start(std::function<void()> task)
{
    std::erase_if(m_tasks, [](const std::future<void> &earlier) {
        return earlier.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
    });
    try {
        m_tasks.push_back(std::async(std::launch::async, std::move(task)));
    } catch (const std::system_error &) {
        return; // the system refuses a thread
    }
}

void BackgroundTasks::waitFor(std::chrono::milliseconds duration) const
{
    const auto end = std::chrono::steady_clock::now() + duration;
    for (const auto &task : m_tasks)
        task.wait_until(end);
}
