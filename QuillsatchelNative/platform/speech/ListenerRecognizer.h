#pragma once

#include "platform/SpeechRecognizer.h"
#include "platform/speech/ListenerLimits.h"
#include "platform/speech/ListenerThread.h"

#include <memory>
#include <string>
#include <vector>

/// Lets a process of its own, the listener, understand speech: a damaged model can end whatever
/// process it is loaded into. The listener starts with the first task, while its audio queues, and
/// is kept for those that follow. One task at a time: a new one ends an older one with an error.
class ListenerRecognizer final : public SpeechRecognizer
{
public:
    /// `command` is the path of the listener and its arguments.
    explicit ListenerRecognizer(std::vector<std::string> command,
                                const ListenerLimits &limits = {});

    /// Whether there is a listener to start.
    bool isAvailable() const override;
    std::shared_ptr<SpeechRecognitionRequest> makeRequest() override;
    std::unique_ptr<SpeechRecognitionTask>
    recognitionTask(std::shared_ptr<SpeechRecognitionRequest> request,
                    ResultHandler handler) override;

private:
    const std::string m_program;
    const ListenerLimits m_limits;
    ListenerThread m_thread;
};
