#pragma once

#include "platform/speech/ListenerMailbox.h"
#include "platform/speech/ListenerMessageReader.h"
#include "platform/speech/ListenerPatience.h"
#include "platform/speech/Subprocess.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>

/// What the I/O thread does: passes the audio of one job after the other to a listener, and its
/// results back. Little audio is on its way at a time, so that a cancelled job is soon forgotten.
class ListenerConversation
{
public:
    ListenerConversation(Subprocess listener, ListenerMailbox &mailbox,
                         const ListenerLimits &limits);
    /// Ends the listener.
    ~ListenerConversation();
    ListenerConversation(const ListenerConversation &) = delete;
    ListenerConversation &operator=(const ListenerConversation &) = delete;

    /// Until the mailbox is closed, or the listener is idle for long, ends, hangs or talks
    /// nonsense. A job that is then under way fails.
    void run();

private:
    using Clock = std::chrono::steady_clock;

    /// A message that is answered in its turn.
    struct Question {
        std::uint32_t task = 0;
        ListenerMessage::Kind kind = ListenerMessage::Kind::audio;
    };

    // Each of these is false where the conversation is over.
    bool takeJobs();
    bool send();
    bool wait();
    bool receive();
    bool accept(const ListenerMessage &answer);

    void begin(std::shared_ptr<ListenerJob> job);
    bool passAudio();
    void say(const ListenerMessage &message);
    void tell(const ListenerMessage &answer);
    void dropJob();

    Subprocess m_listener;
    ListenerMailbox &m_mailbox;
    ListenerPatience m_patience;
    ListenerMessageReader m_reader;
    std::string m_outgoing;
    std::shared_ptr<ListenerJob> m_job;
    std::uint32_t m_task = 0;         // the number of the latest job
    std::deque<Question> m_questions; // that are not answered yet
    bool m_hasSaidEnd = false;
};
