#include "platform/speech/ListenerRequest.h"

#include <algorithm>
#include <iterator>
#include <utility>

ListenerRequest::ListenerRequest(MainQueue &mainQueue, std::size_t capacity,
                                 std::function<void()> onChange, bool beginsSentence)
    : m_mainQueue(mainQueue)
    , m_capacity(capacity)
    , m_onChange(std::move(onChange))
    , m_beginsSentence(beginsSentence)
{
}

void ListenerRequest::append(std::span<const std::int16_t> samples)
{
    post([copy = std::vector(samples.begin(), samples.end())](ListenerRequest &request) {
        request.store(copy);
    });
}

void ListenerRequest::endAudio()
{
    post([](ListenerRequest &request) { request.leaveOpen(State::ended); });
}

void ListenerRequest::fail()
{
    post([](ListenerRequest &request) { request.leaveOpen(State::failed); });
}

void ListenerRequest::setHandler(SpeechRecognizer::ResultHandler handler)
{
    m_handler = std::make_shared<const SpeechRecognizer::ResultHandler>(std::move(handler));
}

void ListenerRequest::report(const std::optional<SpeechRecognitionResult> &result, bool isError)
{
    const auto handler = m_handler;
    if (isError || (result && result->isFinal))
        cancel();
    if (handler)
        (*handler)(result, isError);
}

void ListenerRequest::cancel()
{
    m_handler.reset();
    m_samples.clear();
    endAudio();
}

std::vector<std::int16_t> ListenerRequest::take(std::size_t count)
{
    std::vector<std::int16_t> samples(std::min(count, m_samples.size()));
    const auto size = static_cast<std::ptrdiff_t>(samples.size());
    std::copy_n(m_samples.begin(), size, samples.begin());
    m_samples.erase(m_samples.begin(), std::next(m_samples.begin(), size));
    return samples;
}

void ListenerRequest::post(std::function<void(ListenerRequest &)> change)
{
    m_mainQueue.async([request = shared_from_this(), change = std::move(change)] {
        change(*request);
        request->m_onChange();
    });
}

void ListenerRequest::store(const std::vector<std::int16_t> &samples)
{
    if (m_state != State::open)
        return;
    m_samples.insert(m_samples.end(), samples.begin(), samples.end());
    if (m_samples.size() <= m_capacity)
        return;
    m_state = State::overflowed;
    m_samples.clear();
}

void ListenerRequest::leaveOpen(State state)
{
    if (m_state == State::open)
        m_state = state;
}
