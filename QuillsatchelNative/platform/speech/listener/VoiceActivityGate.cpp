#include "platform/speech/listener/VoiceActivityGate.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace
{

constexpr int SampleRate = 16'000;
constexpr double FrameDuration = 0.03; // seconds

// Four of the latest five frames open the gate, and seven silent ones close it.
constexpr std::uint32_t OpeningFrames = 0b11111;
constexpr int MinSpeechFrames = 4;
constexpr std::uint32_t ClosingFrames = 0b111'1111;

constexpr std::size_t BeforeSpeech = SampleRate / 5; // more makes recognition worse
// Shorter than the silence that closes the gate, so that no utterance begins with the last word.
constexpr std::size_t AfterSpeech = SampleRate * 18 / 100;

} // namespace

std::unique_ptr<SpeechGate> VoiceActivityGate::make()
{
    // Less strict modes take noise for speech.
    Detector detector(ps_vad_init(PS_VAD_MEDIUM_STRICT, SampleRate, FrameDuration));
    if (!detector)
        return nullptr;
    return std::unique_ptr<SpeechGate>(new VoiceActivityGate(std::move(detector)));
}

VoiceActivityGate::VoiceActivityGate(Detector detector)
    : m_detector(std::move(detector))
{
}

void VoiceActivityGate::reset()
{
    m_pending.clear();
    m_recent.clear();
    m_frames = 0;
    m_isOpen = false;
}

std::vector<std::int16_t> VoiceActivityGate::pass(std::span<const std::int16_t> samples)
{
    const bool wasOpen = m_isOpen;
    m_recent.insert(m_recent.end(), samples.begin(), samples.end());
    classify(samples);
    std::vector<std::int16_t> passed;
    if (wasOpen)
        passed.assign(samples.begin(), samples.end());
    else if (m_isOpen)
        passed = m_recent;
    keepRecent(wasOpen && !m_isOpen ? AfterSpeech : BeforeSpeech);
    return passed;
}

void VoiceActivityGate::classify(std::span<const std::int16_t> samples)
{
    m_pending.insert(m_pending.end(), samples.begin(), samples.end());
    const auto size = ps_vad_frame_size(m_detector.get());
    std::span<const std::int16_t> rest(m_pending);
    for (; rest.size() >= size; rest = rest.subspan(size))
        update(ps_vad_classify(m_detector.get(), rest.data()) == PS_VAD_SPEECH);
    m_pending.erase(m_pending.begin(), m_pending.end() - std::ssize(rest));
}

void VoiceActivityGate::update(bool isSpeech)
{
    m_frames = m_frames << 1U | std::uint32_t(isSpeech);
    m_isOpen = m_isOpen ? (m_frames & ClosingFrames) != 0
                        : std::popcount(m_frames & OpeningFrames) >= MinSpeechFrames;
}

void VoiceActivityGate::keepRecent(std::size_t count)
{
    const auto excess = m_recent.size() - std::min(m_recent.size(), count);
    m_recent.erase(m_recent.begin(), m_recent.begin() + static_cast<std::ptrdiff_t>(excess));
}
