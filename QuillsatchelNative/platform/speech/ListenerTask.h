#pragma once

#include "platform/SpeechRecognizer.h"
#include "platform/speech/ListenerJob.h"

#include <memory>

/// Whoever holds this wants to know what is said.
class ListenerTask final : public SpeechRecognitionTask
{
public:
    explicit ListenerTask(std::shared_ptr<ListenerJob> job);
    ListenerTask(const ListenerTask &) = delete;
    ListenerTask &operator=(const ListenerTask &) = delete;
    ~ListenerTask() override;

    void cancel() override;

private:
    const std::shared_ptr<ListenerJob> m_job;
};
