#pragma once

#include "platform/SpeechRecognizer.h"
#include "platform/speech/ListenerRequest.h"

#include <memory>
#include <mutex>
#include <string>

/// One recognition: the audio to understand, and who wants to know. Any thread.
class ListenerJob
{
public:
    ListenerJob(std::shared_ptr<ListenerRequest> request, SpeechRecognizer::ResultHandler handler);

    ListenerRequest &request() { return *m_request; }

    void cancel();
    bool isOver() const;

    /// The handler is called within these, and not any more once the job is over.
    void tell(std::string text);
    void finish(std::string text, bool isError);
    void fail();

private:
    using SharedHandler = std::shared_ptr<const SpeechRecognizer::ResultHandler>;

    SharedHandler takeHandler();

    const std::shared_ptr<ListenerRequest> m_request;
    mutable std::mutex m_mutex;
    SharedHandler m_handler; // null once it is over: it may hold what holds the job
};
