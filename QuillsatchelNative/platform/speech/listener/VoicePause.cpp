#include "platform/speech/listener/VoicePause.h"

#include <algorithm>
#include <cmath>

namespace
{

// Quiet is what is close to the noise, if that is softer than the voice, or far below the voice.
constexpr double AboveNoise = 2;
constexpr double MaxOfVoice = 0.1;
constexpr double MinOfVoice = 1.0 / 40;

// The factors in a second are 0.6 and 1.2.
constexpr double VoiceDecay = 0.995;
constexpr double NoiseGrowth = 1.002;

} // namespace

void VoicePause::update(std::span<const std::int16_t> samples)
{
    for (const auto sample : samples) {
        m_squares += double(sample) * sample;
        if (++m_size < FrameSize)
            continue;
        addFrame(std::sqrt(m_squares / FrameSize));
        m_squares = 0;
        m_size = 0;
    }
}

void VoicePause::addFrame(double loudness)
{
    m_voice = std::max(loudness, m_voice * VoiceDecay);
    const bool isSilence = loudness == 0; // from a muted or starting device, not of the room
    if (!isSilence)
        m_noise = m_noise == 0 ? loudness : std::min(loudness, m_noise * NoiseGrowth);
    const double limit =
        std::clamp(m_noise * AboveNoise, m_voice * MinOfVoice, m_voice * MaxOfVoice);
    const bool isQuiet = isSilence || loudness < limit;
    m_quietFrames = isQuiet ? m_quietFrames + 1 : 0;
}
