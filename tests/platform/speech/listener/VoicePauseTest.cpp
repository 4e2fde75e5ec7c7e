#include "platform/speech/listener/VoicePause.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <vector>

namespace
{

constexpr double Room = 10;
constexpr double Voice = 3'000;

class VoicePauseTest : public testing::Test
{
protected:
    /// Noise of this loudness for a number of frames.
    void hear(double loudness, std::size_t frames)
    {
        std::normal_distribution<double> sound;
        std::vector<std::int16_t> samples(frames * VoicePause::FrameSize);
        for (auto &sample : samples)
            sample = static_cast<std::int16_t>(loudness * sound(random));
        pause.update(samples);
    }

    std::mt19937 random { 1 };
    VoicePause pause;
};

TEST_F(VoicePauseTest, NeedsFourQuietFrames)
{
    hear(Room, 50);
    hear(Voice, 100);
    EXPECT_FALSE(pause.isPause());
    hear(Room, 3);
    EXPECT_FALSE(pause.isPause());
    hear(Room, 1);
    EXPECT_TRUE(pause.isPause());
    hear(Voice, 1);
    EXPECT_FALSE(pause.isPause());
}

TEST_F(VoicePauseTest, IgnoresGapsWithinWords)
{
    hear(Room, 50);
    for (int syllable = 0; syllable < 10; ++syllable) {
        hear(Voice, 12);
        hear(Room, 3);
        EXPECT_FALSE(pause.isPause());
    }
}

TEST_F(VoicePauseTest, KnowsQuietSoundsOfAVoiceFromPauses)
{
    hear(Room, 50);
    hear(Voice, 30);
    hear(Voice / 20, 10);
    EXPECT_FALSE(pause.isPause());
}

TEST_F(VoicePauseTest, AdaptsToANoisyRoom)
{
    constexpr double Noise = Voice / 20;
    hear(Noise, 50);
    hear(Voice, 100);
    hear(Noise, 4);
    EXPECT_TRUE(pause.isPause());
}

TEST_F(VoicePauseTest, AdaptsToMoreNoise)
{
    hear(Room, 50);
    constexpr double Noise = Voice / 20;
    hear(Noise, 2'000);
    hear(Voice, 100);
    hear(Noise, 4);
    EXPECT_TRUE(pause.isPause());
}

TEST_F(VoicePauseTest, AdaptsToASoftVoice)
{
    hear(Room, 50);
    hear(Voice, 100);
    hear(Room, 500);
    hear(Voice / 40, 10);
    EXPECT_FALSE(pause.isPause());
    hear(Room, 4);
    EXPECT_TRUE(pause.isPause());
}

TEST_F(VoicePauseTest, AdaptsToADictationThatBeginsWithAWord)
{
    hear(Voice, 100);
    EXPECT_FALSE(pause.isPause());
    hear(Room, 4);
    EXPECT_TRUE(pause.isPause());
}

TEST_F(VoicePauseTest, TakesDigitalSilenceForAPause)
{
    hear(0, 50);
    EXPECT_TRUE(pause.isPause());
    hear(Voice, 10);
    EXPECT_FALSE(pause.isPause());
    hear(0, 4);
    EXPECT_TRUE(pause.isPause());
}

TEST_F(VoicePauseTest, LearnsTheNoiseAfterDigitalSilence)
{
    constexpr double Noise = Voice / 20;
    hear(0, 50);
    hear(Noise, 10);
    hear(Voice, 100);
    hear(Noise, 4);
    EXPECT_TRUE(pause.isPause());
}

TEST_F(VoicePauseTest, TakesSamplesInAnyPieces)
{
    const std::vector<std::int16_t> loud(6 * VoicePause::FrameSize, 3'000);
    const std::vector<std::int16_t> quiet(4 * VoicePause::FrameSize, 5);
    pause.update(loud);
    for (const auto &sample : quiet) {
        EXPECT_FALSE(pause.isPause());
        pause.update({ &sample, 1 });
    }
    pause.update({});
    EXPECT_TRUE(pause.isPause());
}

TEST_F(VoicePauseTest, AcceptsTheLoudestSamples)
{
    const std::vector<std::int16_t> loudest(4 * VoicePause::FrameSize,
                                            std::numeric_limits<std::int16_t>::min());
    pause.update(loudest);
    EXPECT_FALSE(pause.isPause());
    hear(Room, 4);
    EXPECT_TRUE(pause.isPause());
}

} // namespace
