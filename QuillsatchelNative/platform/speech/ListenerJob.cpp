#include "platform/speech/ListenerJob.h"

#include <optional>
#include <utility>

ListenerJob::ListenerJob(std::shared_ptr<ListenerRequest> request,
                         SpeechRecognizer::ResultHandler handler)
    : m_request(std::move(request))
    , m_handler(std::make_shared<const SpeechRecognizer::ResultHandler>(std::move(handler)))
{
}

void ListenerJob::cancel()
{
    takeHandler();
    m_request->close();
}

bool ListenerJob::isOver() const
{
    const std::lock_guard lock(m_mutex);
    return !m_handler;
}

void ListenerJob::tell(std::string text)
{
    SharedHandler handler;
    {
        const std::lock_guard lock(m_mutex);
        handler = m_handler;
    }
    if (handler)
        (*handler)(SpeechRecognitionResult { .formattedString = std::move(text) }, false);
}

void ListenerJob::finish(std::string text, bool isError)
{
    if (const auto handler = takeHandler())
        (*handler)(SpeechRecognitionResult { .formattedString = std::move(text), .isFinal = true },
                   isError);
    m_request->close();
}

void ListenerJob::fail()
{
    if (const auto handler = takeHandler())
        (*handler)(std::nullopt, true);
    m_request->close();
}

ListenerJob::SharedHandler ListenerJob::takeHandler()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_handler, nullptr);
}
