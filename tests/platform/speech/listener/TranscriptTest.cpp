#include "platform/speech/listener/Transcript.h"

#include <gtest/gtest.h>

namespace
{

class TranscriptTest : public testing::Test
{
protected:
    void recognize(const std::string &words, int times = 1)
    {
        for (; times > 0; --times)
            transcript.update({ .words = words });
    }

    void pauseAfter(const std::string &words)
    {
        transcript.update({ .words = words, .isUtteranceOver = true });
    }

    Spelling spelling { "en-us" };
    Transcript transcript { spelling };
};

TEST_F(TranscriptTest, IsEmptyAtFirst)
{
    EXPECT_EQ(transcript.text(), "");
    recognize("", 10);
    EXPECT_EQ(transcript.text(), "");
}

TEST_F(TranscriptTest, ShowsOnlySteadyWordsOfTheCurrentUtterance)
{
    recognize("buy milk", 3);
    EXPECT_EQ(transcript.text(), "");
    recognize("buy mill");
    EXPECT_EQ(transcript.text(), "buy");
}

TEST_F(TranscriptTest, ShowsAllWordsOfAFinishedUtterance)
{
    recognize("buy mill");
    pauseAfter("buy milk");
    EXPECT_EQ(transcript.text(), "buy milk");
}

TEST_F(TranscriptTest, ContinuesAfterAPause)
{
    pauseAfter("buy milk");
    recognize("");
    EXPECT_EQ(transcript.text(), "buy milk");
    recognize("and bread", 4);
    EXPECT_EQ(transcript.text(), "buy milk and bread");
    pauseAfter("and bread");
    EXPECT_EQ(transcript.text(), "buy milk and bread");
}

TEST_F(TranscriptTest, RestartsSteadinessAfterAPause)
{
    recognize("buy", 4);
    pauseAfter("buy");
    recognize("buy", 3);
    EXPECT_EQ(transcript.text(), "buy");
    recognize("buy");
    EXPECT_EQ(transcript.text(), "buy buy");
}

TEST_F(TranscriptTest, EndsWithAllWordsOfTheLastUtterance)
{
    pauseAfter("buy milk");
    recognize("and");
    transcript.finish("and bread");
    EXPECT_EQ(transcript.text(), "buy milk and bread");
}

TEST_F(TranscriptTest, EndsWithoutMoreWords)
{
    pauseAfter("buy milk");
    transcript.finish("");
    EXPECT_EQ(transcript.text(), "buy milk");
}

TEST_F(TranscriptTest, HasOneSpaceBetweenWords)
{
    pauseAfter("  buy   milk ");
    pauseAfter("");
    pauseAfter("and\tbread");
    EXPECT_EQ(transcript.text(), "buy milk and bread");
}

TEST_F(TranscriptTest, SpellsWords)
{
    pauseAfter("i think i'm late");
    EXPECT_EQ(transcript.text(), "I think I'm late");
    recognize("so i ran", 4);
    EXPECT_EQ(transcript.text(), "I think I'm late so I ran");
}

} // namespace
