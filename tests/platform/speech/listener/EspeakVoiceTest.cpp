#include "platform/speech/listener/EspeakVoice.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace
{

class EspeakVoiceTest : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!voice)
            GTEST_SKIP() << "libespeak-ng1 is not installed";
    }

    std::optional<EspeakVoice> voice = EspeakVoice::open();
};

TEST_F(EspeakVoiceTest, PronouncesWords)
{
    EXPECT_EQ(voice->pronounce("chatbot"), "CH AE T B AA T");
    EXPECT_EQ(voice->pronounce("webhook"), "W EH B HH UH K");
}

TEST_F(EspeakVoiceTest, PronouncesAbbreviationsAndAccents)
{
    EXPECT_EQ(voice->pronounce("CSV"), "S IY EH S V IY");
    EXPECT_TRUE(voice->pronounce("naïve"));
}

TEST_F(EspeakVoiceTest, SurvivesWhatIsNoWord)
{
    for (const std::string &text : { std::string(), std::string("..."), std::string(10'000, 'a'),
                                     std::string("\xC3\xFF"), std::string("one. two") })
        voice->pronounce(text);
    EXPECT_EQ(voice->pronounce(""), std::nullopt);
    EXPECT_EQ(voice->pronounce("chatbot"), "CH AE T B AA T");
}

TEST_F(EspeakVoiceTest, CanBeOpenedAgain)
{
    voice.reset();
    voice = EspeakVoice::open();
    ASSERT_TRUE(voice);
    EXPECT_EQ(voice->pronounce("chatbot"), "CH AE T B AA T");
}

} // namespace
