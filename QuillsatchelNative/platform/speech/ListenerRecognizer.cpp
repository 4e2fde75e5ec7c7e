#include "platform/speech/ListenerRecognizer.h"

#include "platform/speech/ListenerTask.h"

#include <unistd.h>
#include <utility>

ListenerRecognizer::ListenerRecognizer(std::vector<std::string> command,
                                       const ListenerLimits &limits)
    : m_program(command.front())
    , m_limits(limits)
    , m_thread(std::move(command), limits)
{
}

bool ListenerRecognizer::isAvailable() const
{
    return access(m_program.c_str(), X_OK) == 0;
}

std::shared_ptr<SpeechRecognitionRequest> ListenerRecognizer::makeRequest()
{
    return std::make_shared<ListenerRequest>(m_thread.wakeup(), m_limits.queuedSamples);
}

std::unique_ptr<SpeechRecognitionTask>
ListenerRecognizer::recognitionTask(std::shared_ptr<SpeechRecognitionRequest> request,
                                    ResultHandler handler)
{
    const auto job = std::make_shared<ListenerJob>(
        std::static_pointer_cast<ListenerRequest>(std::move(request)), std::move(handler));
    m_thread.perform(job);
    return std::make_unique<ListenerTask>(job);
}
