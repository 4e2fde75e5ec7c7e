#include "platform/desktop/ProcessEnd.h"

#include <cstdlib>
#include <utility>

namespace
{

ProcessEnd *current = nullptr;

} // namespace

ProcessEnd::ProcessEnd(std::function<void()> work)
    : m_work(std::move(work))
{
    [[maybe_unused]] static const int isRegistered = std::atexit(&exiting);
    current = this;
}

ProcessEnd::~ProcessEnd()
{
    current = nullptr;
    m_work();
}

void ProcessEnd::exiting()
{
    if (current && current->m_thread == std::this_thread::get_id())
        current->m_work();
}
