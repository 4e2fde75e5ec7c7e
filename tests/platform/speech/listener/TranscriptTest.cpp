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

    void endUtterance(const std::string &words)
    {
        transcript.update({ .words = words, .isUtteranceOver = true });
    }

    void pauseWithin(const std::string &words) { transcript.update({ .words = words }, true); }

    Spelling spelling { "en-us" };
    Transcript transcript { &spelling };
};

TEST_F(TranscriptTest, IsEmptyAtFirst)
{
    EXPECT_EQ(transcript.text(), "");
    recognize("", 10);
    EXPECT_EQ(transcript.text(), "");
}

TEST_F(TranscriptTest, ShowsOnlySteadyWordsOfTheCurrentUtterance)
{
    recognize("buy milk", 4);
    EXPECT_EQ(transcript.text(), "");
    recognize("buy mill");
    EXPECT_EQ(transcript.text(), "buy");
}

TEST_F(TranscriptTest, ShowsAllWordsInAPause)
{
    recognize("buy", 5);
    recognize("buy milk");
    EXPECT_EQ(transcript.text(), "buy");
    pauseWithin("buy milk");
    EXPECT_EQ(transcript.text(), "buy milk");
    pauseWithin("buy mill");
    EXPECT_EQ(transcript.text(), "buy mill");
}

TEST_F(TranscriptTest, KeepsTheWordsOfAPauseWhileTheHypothesisBeginsWithThem)
{
    pauseWithin("buy milk");
    recognize("buy milk and");
    EXPECT_EQ(transcript.text(), "buy milk");
    recognize("buy milk and", 4);
    EXPECT_EQ(transcript.text(), "buy milk and");
    recognize("buy mill and");
    EXPECT_EQ(transcript.text(), "buy");
}

TEST_F(TranscriptTest, RemovesTheWordsOfAPauseThatTheEngineRemoves)
{
    pauseWithin("buy milk");
    recognize("buy");
    EXPECT_EQ(transcript.text(), "");
    pauseWithin("");
    EXPECT_EQ(transcript.text(), "");
}

TEST_F(TranscriptTest, ShowsAllWordsOfAFinishedUtterance)
{
    recognize("buy mill");
    endUtterance("buy milk");
    EXPECT_EQ(transcript.text(), "buy milk");
}

TEST_F(TranscriptTest, ContinuesAfterAPause)
{
    endUtterance("buy milk");
    recognize("");
    EXPECT_EQ(transcript.text(), "buy milk");
    recognize("and bread", 5);
    EXPECT_EQ(transcript.text(), "buy milk and bread");
    endUtterance("and bread");
    EXPECT_EQ(transcript.text(), "buy milk and bread");
}

TEST_F(TranscriptTest, RestartsSteadinessAfterAPause)
{
    recognize("buy", 5);
    endUtterance("buy");
    recognize("buy", 4);
    EXPECT_EQ(transcript.text(), "buy");
    recognize("buy");
    EXPECT_EQ(transcript.text(), "buy buy");
}

TEST_F(TranscriptTest, EndsWithAllWordsOfTheLastUtterance)
{
    endUtterance("buy milk");
    recognize("and");
    transcript.finish("and bread");
    EXPECT_EQ(transcript.text(), "buy milk and bread");
}

TEST_F(TranscriptTest, EndsWithoutMoreWords)
{
    endUtterance("buy milk");
    transcript.finish("");
    EXPECT_EQ(transcript.text(), "buy milk");
}

TEST_F(TranscriptTest, HasOneSpaceBetweenWords)
{
    endUtterance("  buy   milk ");
    endUtterance("");
    endUtterance("and\tbread");
    EXPECT_EQ(transcript.text(), "buy milk and bread");
}

TEST_F(TranscriptTest, KeepsATextAsTheEngineWritesIt)
{
    transcript = Transcript(nullptr);
    recognize(" Well,");
    EXPECT_EQ(transcript.text(), "Well,") << "words of a text are steady";
    recognize(" Well, i think");
    EXPECT_EQ(transcript.text(), "Well, i think");
    endUtterance(" Well, i think so.");
    recognize("");
    EXPECT_EQ(transcript.text(), "Well, i think so.");
    transcript.finish(" Bye.");
    EXPECT_EQ(transcript.text(), "Well, i think so. Bye.");
}

TEST_F(TranscriptTest, AddsNoSpacesToATextWithoutThem)
{
    transcript = Transcript(nullptr);
    endUtterance("今日は");
    endUtterance("元気です");
    EXPECT_EQ(transcript.text(), "今日は元気です");
}

TEST_F(TranscriptTest, SpellsWords)
{
    endUtterance("i think i'm late");
    EXPECT_EQ(transcript.text(), "I think I'm late");
    recognize("so i ran", 5);
    EXPECT_EQ(transcript.text(), "I think I'm late so I ran");
}

} // namespace
