#pragma once

#include "platform/MainQueue.h"
#include "platform/SpeechRecognizer.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

/// One recognition: the audio that waits for the listener, and the handler of the results.
/// `append`, `endAudio` and `fail` never wait; they take effect on the main queue, in their order.
/// All other functions are for the main thread only.
class ListenerRequest final :
    public SpeechRecognitionRequest,
    public std::enable_shared_from_this<ListenerRequest>
{
public:
    enum class State {
        open,       ///< more audio may come
        ended,      ///< no more audio comes
        failed,     ///< likewise, because the audio broke off
        overflowed, ///< too much audio waited; it was dropped
    };

    /// At most `capacity` samples wait. `onChange` is called on the main thread, on a later turn,
    /// after audio, its end and a cancellation. The words begin a sentence if `beginsSentence`.
    ListenerRequest(MainQueue &mainQueue, std::size_t capacity, std::function<void()> onChange,
                    bool beginsSentence = false);

    void append(std::span<const std::int16_t> samples) override;
    void endAudio() override;
    void fail() override;

    void setHandler(SpeechRecognizer::ResultHandler handler);
    /// Calls the handler, unless the recognition is over: a final result or an error ends it.
    void report(const std::optional<SpeechRecognitionResult> &result, bool isError);
    /// Ends the recognition without calling the handler.
    void cancel();

    bool beginsSentence() const { return m_beginsSentence; }

    bool isOver() const { return !m_handler; }

    State state() const { return m_state; }

    bool isEmpty() const { return m_samples.empty(); }

    /// The next samples, at most `count`.
    std::vector<std::int16_t> take(std::size_t count);

private:
    void post(std::function<void(ListenerRequest &)> change);
    void store(const std::vector<std::int16_t> &samples);
    void leaveOpen(State state);

    MainQueue &m_mainQueue;
    const std::size_t m_capacity;
    const std::function<void()> m_onChange;
    const bool m_beginsSentence;
    std::deque<std::int16_t> m_samples;
    State m_state = State::open;
    // Null once the recognition is over: it may own what owns this.
    std::shared_ptr<const SpeechRecognizer::ResultHandler> m_handler;
};
