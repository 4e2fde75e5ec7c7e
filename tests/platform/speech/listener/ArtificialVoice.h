#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>
#include <random>
#include <vector>

/// Sounds for detectors of speech.
namespace ArtificialVoice
{

using Samples = std::vector<std::int16_t>;

constexpr std::size_t Second = 16'000;  ///< in samples
constexpr std::size_t PieceSize = 1024; ///< as the listener passes them to engines

/// A vowel: the harmonics of a low voice, loudest around 700 Hz.
inline Samples vowel(std::size_t count)
{
    Samples samples(count);
    for (std::size_t index = 0; index < count; ++index) {
        const auto time = static_cast<double>(index) / Second;
        double sum = 0;
        for (int harmonic = 1; harmonic <= 20; ++harmonic) {
            const double frequency = 140.0 * harmonic;
            sum += std::sin(2 * std::numbers::pi * frequency * time) /
                   (1 + std::abs(frequency - 700) / 200);
        }
        samples[index] = static_cast<std::int16_t>(2'000 * sum);
    }
    return samples;
}

/// The noise of a quiet room.
inline Samples quietRoom(std::size_t count)
{
    std::minstd_rand random;
    std::normal_distribution<> amplitude(0, 15);
    Samples samples(count);
    for (auto &sample : samples)
        sample = static_cast<std::int16_t>(amplitude(random));
    return samples;
}

} // namespace ArtificialVoice
