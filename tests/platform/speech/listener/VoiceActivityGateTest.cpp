#include "platform/speech/listener/VoiceActivityGate.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

namespace
{

using Samples = std::vector<std::int16_t>;

constexpr std::size_t Second = 16'000;
constexpr std::size_t PieceSize = 1024;

/// A vowel: the harmonics of a low voice, loudest around 700 Hz.
Samples vowel(std::size_t count)
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
Samples silence(std::size_t count)
{
    std::minstd_rand random;
    std::normal_distribution<> amplitude(0, 15);
    Samples samples(count);
    for (auto &sample : samples)
        sample = static_cast<std::int16_t>(amplitude(random));
    return samples;
}

class VoiceActivityGateTest : public testing::Test
{
protected:
    Samples pass(const Samples &samples)
    {
        Samples passed;
        for (std::span<const std::int16_t> rest(samples); !rest.empty();) {
            const auto piece = rest.first(std::min(rest.size(), PieceSize));
            const auto part = gate->pass(piece);
            passed.insert(passed.end(), part.begin(), part.end());
            rest = rest.subspan(piece.size());
        }
        return passed;
    }

    std::unique_ptr<SpeechGate> gate = VoiceActivityGate::make();
};

TEST_F(VoiceActivityGateTest, PassesNothingInAQuietRoom)
{
    EXPECT_TRUE(pass(silence(10 * Second)).empty());
    EXPECT_TRUE(pass(Samples(10 * Second)).empty());
    EXPECT_FALSE(gate->isOpen());
}

TEST_F(VoiceActivityGateTest, PassesSpeechAndTheAudioShortlyBeforeIt)
{
    pass(silence(2 * Second));
    const auto speech = vowel(Second);
    const auto passed = pass(speech);
    EXPECT_TRUE(gate->isOpen());
    ASSERT_GT(passed.size(), Second);
    EXPECT_LT(passed.size(), Second + Second * 3 / 10);
    EXPECT_TRUE(std::equal(speech.rbegin(), speech.rend(), passed.rbegin()));
}

TEST_F(VoiceActivityGateTest, StaysOpenInAShortPause)
{
    pass(vowel(Second));
    const auto pause = silence(Second / 10);
    EXPECT_EQ(pass(pause), pause);
    EXPECT_TRUE(gate->isOpen());
}

TEST_F(VoiceActivityGateTest, ClosesInALongPause)
{
    pass(vowel(Second));
    const auto passed = pass(silence(2 * Second));
    EXPECT_FALSE(gate->isOpen());
    EXPECT_GT(passed.size(), Second / 5);
    EXPECT_LT(passed.size(), Second);
}

TEST_F(VoiceActivityGateTest, DoesNotPassTheSameSpeechTwice)
{
    const auto isLoud = [](std::int16_t sample) { return std::abs(sample) > 200; };
    const auto speech = vowel(Second);
    const auto loud = std::count_if(speech.begin(), speech.end(), isLoud);
    pass(speech);
    pass(silence(PieceSize));
    while (gate->isOpen())
        pass(silence(PieceSize));
    const auto passed = pass(speech);
    EXPECT_GT(passed.size(), Second);
    EXPECT_EQ(std::count_if(passed.begin(), passed.end(), isLoud), loud);
}

TEST_F(VoiceActivityGateTest, ForgetsTheAudioBeforeAReset)
{
    pass(vowel(Second));
    gate->reset();
    EXPECT_FALSE(gate->isOpen());
    const auto speech = vowel(Second);
    EXPECT_LE(pass(speech).size(), speech.size());
}

} // namespace
