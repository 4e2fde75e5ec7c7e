#include "platform/speech/ListenerConversation.h"

#include "fakes/FakeVocabulary.h"
#include "fakes/ManualMainQueue.h"
#include "platform/speech/ListenerMessageReader.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
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
        request =
            std::make_shared<ListenerRequest>(mainQueue, ListenerLimits().queuedSamples,
                                              [this] { EXPECT_TRUE(conversation->update()); });
        request->setHandler([](const auto &, bool) {});
        conversation->begin(request);
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
        EXPECT_TRUE(conversation->receive(bytes));
    }

    void performTask()
    {
        begin();
        ++task;
        endAudio();
        answer(Kind::final);
    }

    /// A conversation with a listener that learns `vocabulary` first.
    void useVocabulary() { conversation.emplace(listener, ListenerLimits(), &vocabulary); }

    /// The kinds of the messages sent since the last call.
    std::string sentKinds()
    {
        constexpr std::array Names { "begin",   "audio", "end",   "cancel", "unchanged",
                                     "partial", "final", "texts", "learn" };
        ListenerMessageReader reader;
        reader.feed(std::exchange(sent, {}));
        std::string kinds;
        while (const auto message = reader.next())
            (kinds += kinds.empty() ? "" : " ") +=
                Names.at(static_cast<std::size_t>(message->kind));
        return kinds;
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
    FakeVocabulary vocabulary;
    std::string sent;
    ListenerConversation::Listener listener {
        .send = [this](const std::string &bytes) { sent += bytes; },
        .restartTimer =
            [this](std::optional<std::chrono::milliseconds> timeout) {
                deadline = timeout ? std::optional(now + *timeout) : std::nullopt;
            }
    };
    std::optional<ListenerConversation> conversation { std::in_place, listener, ListenerLimits() };
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

TEST_F(ListenerConversationTest, TeachesTheVocabularyBeforeATask)
{
    useVocabulary();
    vocabulary.texts = { "one", "two" };
    begin();
    task = 1;
    speak();
    EXPECT_EQ(sentKinds(), "texts");
    EXPECT_EQ(left(), 15s);
    answer(Kind::unchanged);
    EXPECT_EQ(sentKinds(), "learn");
    answer(Kind::unchanged);
    EXPECT_EQ(sentKinds(), "begin audio");
}

TEST_F(ListenerConversationTest, HasOnlyOneMessageWithTextsOnItsWay)
{
    useVocabulary();
    vocabulary.texts.assign(3, std::string(100'000, 'a'));
    begin();
    task = 1;
    for (int message = 0; message < 3; ++message) {
        EXPECT_EQ(sentKinds(), "texts");
        answer(Kind::unchanged);
    }
    EXPECT_EQ(sentKinds(), "learn");
}

TEST_F(ListenerConversationTest, TeachesAgainOnlyAfterAChange)
{
    useVocabulary();
    begin();
    task = 1;
    answer(Kind::unchanged);
    endAudio();
    answer(Kind::final);
    EXPECT_EQ(sentKinds(), "learn begin end");
    performTask();
    EXPECT_EQ(sentKinds(), "begin end");
    ++vocabulary.number;
    begin();
    EXPECT_EQ(sentKinds(), "learn");
}

TEST_F(ListenerConversationTest, FinishesALessonWhoseTaskIsCancelled)
{
    useVocabulary();
    begin();
    task = 1;
    request->cancel();
    mainQueue.runPending();
    EXPECT_EQ(sentKinds(), "learn") << "there is nothing to cancel";
    answer(Kind::unchanged);
    EXPECT_EQ(left(), 5min);
    performTask();
    EXPECT_EQ(sentKinds(), "begin end");
}

TEST_F(ListenerConversationTest, ALaterTaskWaitsForTheLessonOfAnEarlierOne)
{
    useVocabulary();
    begin();
    task = 1;
    begin();
    speak();
    EXPECT_EQ(sentKinds(), "learn");
    answer(Kind::unchanged);
    EXPECT_EQ(sentKinds(), "begin audio");
}

TEST_F(ListenerConversationTest, RejectsOtherAnswersToALesson)
{
    for (const auto kind : { Kind::partial, Kind::final, Kind::learn, Kind::begin }) {
        useVocabulary();
        begin();
        std::string bytes;
        ListenerMessage { .kind = kind, .task = 1, .payload = {} }.appendTo(bytes);
        EXPECT_FALSE(conversation->receive(bytes));
    }
}

} // namespace
