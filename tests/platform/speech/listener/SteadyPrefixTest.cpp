#include "platform/speech/listener/SteadyPrefix.h"

#include <gtest/gtest.h>

namespace
{

using Words = SteadyPrefix::Words;

class SteadyPrefixTest : public testing::Test
{
protected:
    /// The words that are shown after the last of these hypotheses.
    Words after(const std::vector<Words> &hypotheses)
    {
        Words words;
        for (const auto &hypothesis : hypotheses)
            words = steady.update(hypothesis);
        return words;
    }

    SteadyPrefix steady;
};

TEST_F(SteadyPrefixTest, PassesAWordAfterFiveHypothesesAgree)
{
    EXPECT_EQ(steady.update({ "buy" }), Words());
    EXPECT_EQ(steady.update({ "buy" }), Words());
    EXPECT_EQ(steady.update({ "buy" }), Words());
    EXPECT_EQ(steady.update({ "buy" }), Words());
    EXPECT_EQ(steady.update({ "buy" }), Words { "buy" });
    EXPECT_EQ(steady.update({ "buy", "milk" }), Words { "buy" });
}

TEST_F(SteadyPrefixTest, CountsEachWordSeparately)
{
    EXPECT_EQ(after({ { "buy" },
                      { "buy", "mill" },
                      { "buy", "milk" },
                      { "buy", "milk" },
                      { "buy", "milk", "and" },
                      { "buy", "milk", "end" } }),
              Words { "buy" });
    EXPECT_EQ(after({ { "buy", "milk", "and", "bread" } }), (Words { "buy", "milk" }));
}

TEST_F(SteadyPrefixTest, RestartsCountingWhenAWordChanges)
{
    EXPECT_EQ(after({ { "by" }, { "by" }, { "by" }, { "by" }, { "buy" } }), Words());
    EXPECT_EQ(after({ { "buy" }, { "buy" }, { "buy" } }), Words());
    EXPECT_EQ(after({ { "buy" } }), Words { "buy" });
}

TEST_F(SteadyPrefixTest, HidesWordsAfterAChangedWord)
{
    const Words both { "buy", "milk" };
    EXPECT_EQ(after({ { "by", "milk" }, both, both, both, both }), Words());
}

TEST_F(SteadyPrefixTest, RemovesWordsThatTheEngineRemoves)
{
    const Words both { "buy", "milk" };
    EXPECT_EQ(after({ both, both, both, both, both }), both);
    EXPECT_EQ(after({ { "buy" } }), Words { "buy" });
    EXPECT_EQ(after({ {} }), Words());
}

TEST_F(SteadyPrefixTest, ForgetsEarlierHypothesesWhenCleared)
{
    after({ { "buy" }, { "buy" }, { "buy" }, { "buy" }, { "buy" } });
    steady.clear();
    EXPECT_EQ(after({ { "buy" }, { "buy" }, { "buy" }, { "buy" } }), Words());
    EXPECT_EQ(after({ { "buy" } }), Words { "buy" });
}

} // namespace
