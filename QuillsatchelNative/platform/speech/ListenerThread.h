#pragma once

#include "platform/speech/ListenerLimits.h"
#include "platform/speech/ListenerMailbox.h"

#include <memory>
#include <string>
#include <thread>
#include <vector>

/// The thread that looks after the listener. It is there only while a listener runs, and a
/// listener runs from the first job until it has been idle for long.
class ListenerThread
{
public:
    /// `command` starts a listener.
    ListenerThread(std::vector<std::string> command, const ListenerLimits &limits);
    ListenerThread(const ListenerThread &) = delete;
    ListenerThread &operator=(const ListenerThread &) = delete;
    /// Ends the listener and cancels what it does. Not within a result handler.
    ~ListenerThread();

    const std::shared_ptr<const Wakeup> &wakeup() const { return m_mailbox.wakeup(); }

    /// Begins `job`, in place of any other. Main thread only.
    void perform(const std::shared_ptr<ListenerJob> &job);

private:
    void start();
    void run();
    void converse();
    void failWaitingJob();

    const std::vector<std::string> m_command;
    const ListenerLimits m_limits;
    ListenerMailbox m_mailbox;
    std::thread m_thread;
};
