#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

/// Notices short pauses of a voice by its loudness, sooner than an engine knows that an utterance
/// is over. Adapts to the voice and to the noise of the room.
class VoicePause
{
public:
    /// How long it must be quiet: 40 ms. Shorter gaps are mostly within words.
    static constexpr std::size_t MinQuietFrames = 4;
    static constexpr std::size_t FrameSize = 160; ///< samples: 10 ms

    /// Listens to the next samples, 16,000 a second.
    void update(std::span<const std::int16_t> samples);

    /// Whether it has been quiet up to the latest whole frame.
    bool isPause() const { return m_quietFrames >= MinQuietFrames; }

private:
    void addFrame(double loudness);

    double m_squares = 0; // the sum of the frame that has begun
    std::size_t m_size = 0;
    double m_voice = 0; // loudness: the root of the mean square
    double m_noise = 0; // the same; 0 until there is a sound
    std::size_t m_quietFrames = 0;
};
