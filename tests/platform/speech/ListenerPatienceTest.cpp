#include "platform/speech/ListenerPatience.h"

#include <gtest/gtest.h>

#include <chrono>
#include <optional>

namespace
{

using namespace std::chrono_literals;

/// With the limits that people get, on a clock of the test's own.
class ListenerPatienceTest : public testing::Test
{
protected:
    /// How long it will be kept from now on, if nothing happens.
    std::optional<std::chrono::nanoseconds> left() const
    {
        const auto deadline = patience.deadline();
        return deadline ? std::optional<std::chrono::nanoseconds>(*deadline - now) : std::nullopt;
    }

    ListenerPatience::Time now { 1'000h };
    ListenerPatience patience { ListenerLimits(), now };
};

TEST_F(ListenerPatienceTest, GivesBackAModelThatNobodyUsesForFiveMinutes)
{
    EXPECT_EQ(left(), 5min);
    patience.beginTask();
    now += 1h;
    patience.endTask(now);
    EXPECT_EQ(left(), 5min);
    now += 299'999ms;
    EXPECT_EQ(left(), 1ms);
}

TEST_F(ListenerPatienceTest, CountsAnewAfterEachTask)
{
    for (int round = 0; round < 3; ++round) {
        now += 4min;
        patience.beginTask();
        patience.endTask(now);
        EXPECT_EQ(left(), 5min);
    }
}

TEST_F(ListenerPatienceTest, WaitsForAudioAsLongAsATaskDoes)
{
    patience.beginTask();
    EXPECT_EQ(left(), std::nullopt);
    patience.ask(now);
    patience.receiveAnswer(now);
    EXPECT_EQ(left(), std::nullopt);
}

TEST_F(ListenerPatienceTest, CountsFromTheFirstOfTheQuestionsThatAreOpen)
{
    patience.beginTask();
    patience.ask(now);
    now += 10s;
    patience.ask(now);
    EXPECT_EQ(left(), 5s);
}

TEST_F(ListenerPatienceTest, GivesTheNextAnswerItsTimeOnceOneHasCome)
{
    patience.beginTask();
    patience.ask(now);
    patience.ask(now);
    now += 14s;
    patience.receiveAnswer(now);
    EXPECT_EQ(left(), 15s);
    patience.receiveAnswer(now);
    now += 1h;
    patience.ask(now);
    EXPECT_EQ(left(), 15s);
}

TEST_F(ListenerPatienceTest, StillWantsTheAnswersThatACancelledTaskAskedFor)
{
    patience.beginTask();
    patience.ask(now);
    now += 1s;
    patience.endTask(now);
    EXPECT_EQ(left(), 14s);
    patience.receiveAnswer(now);
    EXPECT_EQ(left(), 5min);
}

} // namespace
