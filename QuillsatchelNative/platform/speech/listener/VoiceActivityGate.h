#pragma once

#include "platform/speech/listener/SpeechGate.h"
#include "support/CPointer.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <pocketsphinx.h>
#include <span>
#include <vector>

/// A gate for decoders that do not detect speech. It uses the detector of PocketSphinx 5, which
/// classifies frames of 30 ms.
class VoiceActivityGate final : public SpeechGate
{
public:
    /// Null without memory.
    static std::unique_ptr<SpeechGate> make();

    void reset() override;
    std::vector<std::int16_t> pass(std::span<const std::int16_t> samples) override;

    bool isOpen() const override { return m_isOpen; }

private:
    using Detector = CPointer<ps_vad_t, &ps_vad_free>;

    explicit VoiceActivityGate(Detector detector);

    void classify(std::span<const std::int16_t> samples);
    void update(bool isSpeech);
    void keepRecent(std::size_t count);

    const Detector m_detector;
    std::vector<std::int16_t> m_pending; // less than a frame
    std::vector<std::int16_t> m_recent;
    std::uint32_t m_frames = 0; // a bit for each of the latest frames, set for speech
    bool m_isOpen = false;
};
