#pragma once

#include "platform/speech/ListenerJob.h"
#include "platform/speech/Wakeup.h"

#include <memory>
#include <mutex>

/// Where the job to do next is left for the I/O thread. Also says when that thread may go: a job
/// is never left in a box that nobody will look into.
class ListenerMailbox
{
public:
    const std::shared_ptr<const Wakeup> &wakeup() const { return m_wakeup; }

    /// A job that still waits fails: the newest counts. True if a thread has to be started, which
    /// empties the box from then on.
    bool put(std::shared_ptr<ListenerJob> job);
    std::shared_ptr<ListenerJob> take();

    /// Asks the thread to go.
    void close();
    bool isClosed() const;
    /// True if the thread may go; false if a job has come.
    bool leave();

private:
    const std::shared_ptr<const Wakeup> m_wakeup = std::make_shared<Wakeup>();
    mutable std::mutex m_mutex;
    std::shared_ptr<ListenerJob> m_job;
    bool m_hasThread = false;
    bool m_isClosed = false;
};
