#include "platform/speech/PulseAudioEngine.h"

#include <cstddef>
#include <utility>

PulseAudioEngine::PulseAudioEngine(std::chrono::milliseconds limit)
    : m_limit(limit)
{
}

void PulseAudioEngine::installTap(int bufferSize, Tap tap)
{
    m_tap.install(static_cast<std::size_t>(bufferSize), std::move(tap));
}

void PulseAudioEngine::removeTap()
{
    m_tap.remove();
}

bool PulseAudioEngine::start()
{
    if (!m_microphone)
        m_microphone = PulseMicrophone::open(m_tap, m_limit);
    return isRunning();
}

void PulseAudioEngine::stop()
{
    m_microphone.reset();
}

bool PulseAudioEngine::isRunning() const
{
    return m_microphone != nullptr;
}
