#include "platform/speech/ListenerTask.h"

#include <utility>

ListenerTask::ListenerTask(std::shared_ptr<ListenerJob> job)
    : m_job(std::move(job))
{
}

ListenerTask::~ListenerTask()
{
    m_job->cancel();
}

void ListenerTask::cancel()
{
    m_job->cancel();
}
