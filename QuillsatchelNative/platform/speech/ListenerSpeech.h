#pragma once

#include "platform/Speech.h"

#include <string>

/// Speech on this machine alone: nothing that is said leaves it.
class ListenerSpeech final : public Speech
{
public:
    /// `program` is the path of the listener.
    explicit ListenerSpeech(std::string program);

    void requestAuthorization(std::function<void(AuthorizationStatus)> receive) override;
    std::unique_ptr<SpeechRecognizer> makeRecognizer() override;
    std::unique_ptr<AudioEngine> makeAudioEngine() override;

private:
    const std::string m_program;
};
