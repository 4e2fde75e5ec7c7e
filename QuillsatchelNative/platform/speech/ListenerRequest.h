#pragma once

#include "platform/SpeechRecognizer.h"
#include "platform/speech/Wakeup.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <span>
#include <vector>

/// The audio on its way to the listener: a bounded queue between the audio thread, which never
/// waits, and the I/O thread.
class ListenerRequest final : public SpeechRecognitionRequest
{
public:
    enum class State {
        open,       ///< more audio may come
        ended,      ///< what is queued is all
        failed,     ///< likewise, and there should have been more
        overflowed, ///< the listener has fallen too far behind; nothing is kept
        closed,     ///< nobody wants it any more; nothing is kept
    };

    /// Keeps `capacity` samples at most; `wakeup` is signalled whenever there is news.
    ListenerRequest(std::shared_ptr<const Wakeup> wakeup, std::size_t capacity);

    void append(std::span<const std::int16_t> samples) override;
    void endAudio() override;
    void fail() override;

    void close();
    /// The next samples, `count` at most.
    std::vector<std::int16_t> take(std::size_t count);
    State state() const;
    bool isEmpty() const;

private:
    void leaveOpenFor(State state);

    const std::shared_ptr<const Wakeup> m_wakeup;
    const std::size_t m_capacity;
    mutable std::mutex m_mutex; // held for a copy of a few samples, no longer
    std::deque<std::int16_t> m_samples;
    State m_state = State::open;
};
