#pragma once

#include <functional>
#include <thread>

/// Does something when the process ends in order: when this goes, or before that when a library
/// calls `exit`, as Qt does when the X server is gone. One at a time.
class ProcessEnd
{
public:
    explicit ProcessEnd(std::function<void()> work);

    ProcessEnd(const ProcessEnd &) = delete;
    ProcessEnd &operator=(const ProcessEnd &) = delete;

    ~ProcessEnd();

private:
    static void exiting();

    std::function<void()> m_work;
    std::thread::id m_thread = std::this_thread::get_id(); // no other may do the work
};
