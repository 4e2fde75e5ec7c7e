#include "platform/speech/listener/Transcript.h"

#include <gtest/gtest.h>

namespace
{

class TranscriptTest : public testing::Test
{
protected:
    void hear(const std::string &words, int times = 1)
    {
        for (; times > 0; --times)
            transcript.update({ .words = words });
    }

    void pauseAfter(const std::string &words)
    {
        transcript.update({ .words = words, .isUtteranceOver = true });
    }

    Transcript transcript { "en-us" };
};

TEST_F(TranscriptTest, IsEmptyAtFirst)
{
    EXPECT_EQ(transcript.text(), "");
    hear("", 10);
    EXPECT_EQ(transcript.text(), "");
}

TEST_F(TranscriptTest, ShowsOfTheUtteranceUnderWayOnlyWhatIsSteady)
{
    hear("buy milk", 3);
    EXPECT_EQ(transcript.text(), "");
    hear("buy mill");
    EXPECT_EQ(transcript.text(), "buy");
}

TEST_F(TranscriptTest, ShowsAnUtteranceThatIsOverWhole)
{
    hear("buy mill");
    pauseAfter("buy milk");
    EXPECT_EQ(transcript.text(), "buy milk");
}

TEST_F(TranscriptTest, GoesOnAfterAPause)
{
    pauseAfter("buy milk");
    hear("");
    EXPECT_EQ(transcript.text(), "buy milk");
    hear("and bread", 4);
    EXPECT_EQ(transcript.text(), "buy milk and bread");
    pauseAfter("and bread");
    EXPECT_EQ(transcript.text(), "buy milk and bread");
}

TEST_F(TranscriptTest, DoesNotTakeWordsBeforeAPauseForSteadyAfterIt)
{
    hear("buy", 4);
    pauseAfter("buy");
    hear("buy", 3);
    EXPECT_EQ(transcript.text(), "buy");
    hear("buy");
    EXPECT_EQ(transcript.text(), "buy buy");
}

TEST_F(TranscriptTest, EndsWithTheLastWordsWhole)
{
    pauseAfter("buy milk");
    hear("and");
    transcript.finish("and bread");
    EXPECT_EQ(transcript.text(), "buy milk and bread");
}

TEST_F(TranscriptTest, EndsWithoutFurtherWords)
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

TEST_F(TranscriptTest, WritesTheEnglishIWithACapitalLetter)
{
    pauseAfter("i think i'm what i've said i'd be");
    EXPECT_EQ(transcript.text(), "I think I'm what I've said I'd be");
    hear("it is in", 4);
    EXPECT_EQ(transcript.text(), "I think I'm what I've said I'd be it is in");
}

TEST_F(TranscriptTest, LeavesTheWordsOfOtherLanguagesAlone)
{
    for (const auto *const tag : { "it-it", "pl", "enm", "" }) {
        transcript = Transcript(tag);
        pauseAfter("i libri");
        EXPECT_EQ(transcript.text(), "i libri") << tag;
    }
    transcript = Transcript("en");
    pauseAfter("i");
    EXPECT_EQ(transcript.text(), "I");
}

} // namespace
