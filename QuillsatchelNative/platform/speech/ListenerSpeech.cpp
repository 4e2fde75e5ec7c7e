#include "platform/speech/ListenerSpeech.h"

#include "platform/speech/ListenerInquiry.h"
#include "platform/speech/ListenerRecognizer.h"
#include "platform/speech/PulseAudioEngine.h"

#include <utility>
#include <vector>

ListenerSpeech::ListenerSpeech(std::string program)
    : m_program(std::move(program))
{
}

void ListenerSpeech::requestAuthorization(std::function<void(AuthorizationStatus)> receive)
{
    receive(AuthorizationStatus::authorized);
}

std::unique_ptr<SpeechRecognizer> ListenerSpeech::makeRecognizer()
{
    if (!listenerHasModel(m_program))
        return nullptr;
    return std::make_unique<ListenerRecognizer>(std::vector { m_program });
}

std::unique_ptr<AudioEngine> ListenerSpeech::makeAudioEngine()
{
    return std::make_unique<PulseAudioEngine>();
}
