#pragma once

#include "platform/Speech.h"

class MainQueue;

/// Speech, through a module that the first dictation opens. Desktop programs need no permission to
/// use the microphone.
class DesktopSpeech final : public Speech
{
public:
    explicit DesktopSpeech(MainQueue &mainQueue)
        : m_mainQueue(mainQueue)
    {
    }

    void requestAuthorization(std::function<void(AuthorizationStatus)> receive) override;
    std::unique_ptr<SpeechRecognizer> makeRecognizer(VocabularySource &vocabulary) override;
    std::unique_ptr<AudioEngine> makeAudioEngine() override;

private:
    Speech *module();

    MainQueue &m_mainQueue;
    std::unique_ptr<Speech> m_module;
};
