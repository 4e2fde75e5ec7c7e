#include "platform/speech/ListenerConversation.h"

#include "fakes/ManualMainQueue.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace
{

using namespace std::chrono_literals;
using Kind = ListenerMessage::Kind;

/// A conversation with the default limits, on the test's clock.
class ListenerConversationTest : public testing::Test
{
protected:
    void begin()
    {
        request = std::make_shared<ListenerRequest>(mainQueue, ListenerLimits().queuedSamples,
                                                    [this] { EXPECT_TRUE(conversation.update()); });
        request->setHandler([](const auto &, bool) {});
        conversation.begin(request);
    }

    /// Sends audio, which the listener has to answer.
    void speak()
    {
        request->append(std::vector<std::int16_t>(1024));
        mainQueue.runPending();
    }

    void endAudio()
    {
        request->endAudio();
        mainQueue.runPending();
    }

    void answer(Kind kind)
    {
        std::string bytes;
        ListenerMessage { .kind = kind, .task = task, .payload = {} }.appendTo(bytes);
        EXPECT_TRUE(conversation.receive(bytes));
    }

    void performTask()
    {
        begin();
        ++task;
        endAudio();
        answer(Kind::final);
    }

    /// Time until the listener is stopped, unless something happens; none if it may run on.
    std::optional<std::chrono::milliseconds> left() const
    {
        return deadline ? std::optional(*deadline - now) : std::nullopt;
    }

    std::chrono::milliseconds now { 1'000h };
    std::optional<std::chrono::milliseconds> deadline;
    ManualMainQueue mainQueue;
    std::shared_ptr<ListenerRequest> request;
    std::uint32_t task = 0;
    ListenerConversation conversation {
        { .send = [](const std::string &) {},
          .restartTimer =
              [this](std::optional<std::chrono::milliseconds> timeout) {
                  deadline = timeout ? std::optional(now + *timeout) : std::nullopt;
              } },
        {}
    };
};

TEST_F(ListenerConversationTest, StopsAListenerThatIsIdleForFiveMinutes)
{
    begin();
    task = 1;
    now += 1h;
    endAudio();
    answer(Kind::final);
    EXPECT_EQ(left(), 5min);
    now += 299'999ms;
    EXPECT_EQ(left(), 1ms);
}

TEST_F(ListenerConversationTest, RestartsTheIdleTimeoutAfterEachTask)
{
    for (int round = 0; round < 3; ++round) {
        now += 4min;
        performTask();
        EXPECT_EQ(left(), 5min);
    }
}

TEST_F(ListenerConversationTest, HasNoTimeoutWhileATaskWaitsForAudio)
{
    performTask();
    begin();
    ++task;
    EXPECT_EQ(left(), std::nullopt);
    speak();
    answer(Kind::partial);
    EXPECT_EQ(left(), std::nullopt);
}

TEST_F(ListenerConversationTest, CountsTheAnswerTimeoutFromTheOldestQuestion)
{
    begin();
    speak();
    EXPECT_EQ(left(), 15s);
    now += 10s;
    speak();
    EXPECT_EQ(left(), 5s);
}

TEST_F(ListenerConversationTest, RestartsTheAnswerTimeoutWithEachAnswer)
{
    begin();
    task = 1;
    speak();
    speak();
    now += 14s;
    answer(Kind::partial);
    EXPECT_EQ(left(), 15s);
    answer(Kind::unchanged);
    now += 1h;
    speak();
    EXPECT_EQ(left(), 15s);
}

TEST_F(ListenerConversationTest, StillExpectsTheAnswersOfACancelledTask)
{
    begin();
    task = 1;
    speak();
    now += 1s;
    request->cancel();
    mainQueue.runPending();
    EXPECT_EQ(left(), 14s);
    answer(Kind::partial);
    EXPECT_EQ(left(), 5min);
}

} // namespace
