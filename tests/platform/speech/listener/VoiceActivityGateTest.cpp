#include "platform/speech/listener/VoiceActivityGate.h"

#include "platform/speech/listener/ArtificialVoice.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

namespace
{

using ArtificialVoice::PieceSize;
using ArtificialVoice::quietRoom;
using ArtificialVoice::Second;
using ArtificialVoice::vowel;
using Samples = ArtificialVoice::Samples;

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
    EXPECT_TRUE(pass(quietRoom(10 * Second)).empty());
    EXPECT_TRUE(pass(Samples(10 * Second)).empty());
    EXPECT_FALSE(gate->isOpen());
}

TEST_F(VoiceActivityGateTest, PassesSpeechAndTheAudioShortlyBeforeIt)
{
    pass(quietRoom(2 * Second));
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
    const auto pause = quietRoom(Second / 10);
    EXPECT_EQ(pass(pause), pause);
    EXPECT_TRUE(gate->isOpen());
}

TEST_F(VoiceActivityGateTest, ClosesInALongPause)
{
    pass(vowel(Second));
    const auto passed = pass(quietRoom(2 * Second));
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
    pass(quietRoom(PieceSize));
    while (gate->isOpen())
        pass(quietRoom(PieceSize));
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
