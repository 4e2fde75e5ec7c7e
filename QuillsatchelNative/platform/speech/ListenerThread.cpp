#include "platform/speech/ListenerThread.h"

#include "platform/speech/ListenerConversation.h"
#include "platform/speech/Subprocess.h"

#include <csignal>
#include <system_error>
#include <utility>

ListenerThread::ListenerThread(std::vector<std::string> command, const ListenerLimits &limits)
    : m_command(std::move(command))
    , m_limits(limits)
{
}

ListenerThread::~ListenerThread()
{
    m_mailbox.close();
    if (m_thread.joinable())
        m_thread.join();
    if (const auto job = m_mailbox.take())
        job->cancel();
}

void ListenerThread::perform(const std::shared_ptr<ListenerJob> &job)
{
    if (wakeup()->descriptor() < 0)
        job->fail();
    else if (m_mailbox.put(job))
        start();
}

void ListenerThread::start()
{
    if (m_thread.joinable())
        m_thread.join(); // it is on its last lines
    try {
        m_thread = std::thread(&ListenerThread::run, this);
    } catch (const std::system_error &) {
        failWaitingJob();
        m_mailbox.leave();
    }
}

void ListenerThread::run()
{
    // Signals are the main thread's.
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_BLOCK, &all, nullptr);
    do {
        converse();
    } while (!m_mailbox.leave());
}

void ListenerThread::converse()
{
    if (auto listener = Subprocess::start(m_command))
        ListenerConversation(std::move(*listener), m_mailbox, m_limits).run();
    else
        failWaitingJob();
}

void ListenerThread::failWaitingJob()
{
    if (const auto job = m_mailbox.take())
        job->fail();
}
