#include "platform/desktop/DesktopSpeech.h"

#include "platform/desktop/Module.h"

#include <utility>

Speech *DesktopSpeech::module()
{
    if (!m_module)
        m_module = Module::make<Speech>("speech", m_mainQueue);
    return m_module.get();
}

void DesktopSpeech::requestAuthorization(std::function<void(AuthorizationStatus)> receive)
{
    if (auto *const speech = module())
        speech->requestAuthorization(std::move(receive));
    else
        receive(AuthorizationStatus::authorized);
}

std::unique_ptr<SpeechRecognizer> DesktopSpeech::makeRecognizer(VocabularySource &vocabulary)
{
    auto *const speech = module();
    return speech ? speech->makeRecognizer(vocabulary) : nullptr;
}

std::unique_ptr<AudioEngine> DesktopSpeech::makeAudioEngine()
{
    auto *const speech = module();
    return speech ? speech->makeAudioEngine() : nullptr;
}
