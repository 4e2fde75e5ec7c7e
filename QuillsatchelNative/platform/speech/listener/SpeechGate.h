#pragma once

#include <cstdint>
#include <span>
#include <vector>

/// Separates speech from the silence between utterances, so that only speech is decoded.
class SpeechGate
{
public:
    virtual ~SpeechGate() = default;

    /// Forgets the audio before a new dictation.
    virtual void reset() = 0;
    /// Returns the samples to decode. When speech begins, they include those from shortly before.
    virtual std::vector<std::int16_t> pass(std::span<const std::int16_t> samples) = 0;
    /// Whether speech continues after the latest samples, which have been decoded.
    virtual bool isOpen() const = 0;
};
