#pragma once

#include "platform/speech/ListenerLimits.h"
#include "platform/speech/ListenerMessageReader.h"
#include "platform/speech/ListenerRequest.h"
#include "platform/speech/VocabularyMessages.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

/// The protocol of one listener: sends the audio of one recognition after the other, reports the
/// answers and says how long to wait for them. Little audio is on its way at a time, so that a
/// cancelled recognition is soon forgotten. Before a recognition, the listener learns the user's
/// vocabulary if that has changed. Does no I/O and reads no clock. Main thread only.
class ListenerConversation
{
public:
    /// How to reach the listener.
    struct Listener {
        std::function<void(const std::string &bytes)> send;
        /// Restarts the timer that stops the listener. With none, the listener may run on.
        std::function<void(std::optional<std::chrono::milliseconds>)> restartTimer;
    };

    /// `vocabulary`, null for none, must outlive the conversation.
    ListenerConversation(Listener listener, const ListenerLimits &limits,
                         VocabularySource *vocabulary = nullptr);
    ~ListenerConversation();
    ListenerConversation(const ListenerConversation &) = delete;
    ListenerConversation &operator=(const ListenerConversation &) = delete;

    /// Begins a recognition. An unfinished one fails.
    void begin(std::shared_ptr<ListenerRequest> request);
    /// Sends what a change of the request allows. False if the listener has fallen too far behind.
    bool update();
    /// Takes what the listener has sent. False if that breaks the protocol.
    bool receive(std::string_view bytes);
    /// The listener is stopped: the unfinished recognition fails.
    void fail();

private:
    /// An answer that the listener owes.
    struct Answer {
        std::uint32_t task = 0;
        ListenerMessage::Kind question {};

        bool accepts(const ListenerMessage &message) const;
    };

    void startTask();
    bool teach();
    void sendAudio();
    bool accept(const ListenerMessage &message);
    void report(const ListenerMessage &answer);
    void send(const ListenerMessage &message);
    void restartTimer();

    const Listener m_listener;
    const ListenerLimits m_limits;
    ListenerMessageReader m_reader;
    std::shared_ptr<ListenerRequest> m_request;
    VocabularySource *const m_vocabulary;
    std::optional<std::uint64_t> m_taughtRevision;
    std::optional<VocabularyMessages> m_lesson; // while the listener learns
    std::uint32_t m_task = 0;                   // number of the latest recognition
    std::deque<Answer> m_owedAnswers;
    bool m_hasSentBegin = false;
    bool m_hasSentEnd = false;
};
