#include "platform/speech/ListenerFixture.h"

#include <algorithm>
#include <atomic>
#include <optional>
#include <random>
#include <sstream>

namespace
{

using namespace std::chrono_literals;
using Strings = std::vector<std::string>;

constexpr auto Long = 60 * 16'000; // samples

class ListenerRecognizerTest : public ListenerFixture
{
};

TEST_F(ListenerRecognizerTest, TellsWhatIsSaidWhileItIsSaidAndAllOfItAtTheEnd)
{
    ListenerRecognizer recognizer(command());
    Recognition recognition(recognizer);
    recognition.append(1024);
    EXPECT_TRUE(recognition.waitForText("1024"));
    recognition.append(1024);
    EXPECT_TRUE(recognition.waitForText("2048"));
    EXPECT_EQ(recognition.ends(), 0);
    recognition.append(100);
    recognition.request->endAudio();
    EXPECT_TRUE(recognition.waitForEnd());
    EXPECT_EQ(recognition.finalText(), "2148");
    EXPECT_EQ(recognition.errors(), 0);
}

TEST_F(ListenerRecognizerTest, HearsWhatIsSaidWhileItsModelLoads)
{
    ListenerRecognizer recognizer(command("load slowly"));
    Recognition recognition(recognizer);
    for (int count = 0; count < 20; ++count)
        recognition.append(1024);
    recognition.request->endAudio();
    EXPECT_TRUE(recognition.waitForEnd());
    EXPECT_EQ(recognition.finalText(), "20480");
}

TEST_F(ListenerRecognizerTest, HearsWhatIsSaidBeforeTheTaskBegins)
{
    ListenerRecognizer recognizer(command());
    const auto request = recognizer.makeRequest();
    request->append(Recognition::Samples(500));
    request->endAudio();
    request->append(Recognition::Samples(500)); // too late
    const Recognition recognition(recognizer, request);
    EXPECT_TRUE(recognition.waitForEnd());
    EXPECT_EQ(recognition.finalText(), "500");
}

TEST_F(ListenerRecognizerTest, HearsALotInOnePiece)
{
    ListenerRecognizer recognizer(command());
    Recognition recognition(recognizer);
    recognition.append(Long);
    recognition.request->endAudio();
    EXPECT_TRUE(recognition.waitForEnd());
    EXPECT_EQ(recognition.finalText(), std::to_string(Long));
}

TEST_F(ListenerRecognizerTest, EndsWithoutAnyAudio)
{
    ListenerRecognizer recognizer(command());
    const Recognition recognition(recognizer);
    recognition.request->endAudio();
    EXPECT_TRUE(recognition.waitForEnd());
    EXPECT_EQ(recognition.finalText(), "0");
}

TEST_F(ListenerRecognizerTest, GivesWhatWasSaidBeforeTheMicrophoneFailedAndAnError)
{
    ListenerRecognizer recognizer(command());
    Recognition recognition(recognizer);
    recognition.append(300);
    recognition.request->fail();
    recognition.append(300);
    EXPECT_TRUE(recognition.waitForEnd());
    EXPECT_EQ(recognition.finalText(), "300");
    EXPECT_EQ(recognition.errors(), 1);
}

TEST_F(ListenerRecognizerTest, StartsNoProcessAndNoThreadBeforeTheFirstTask)
{
    const auto threads = threadCount();
    ListenerRecognizer recognizer(command());
    recognizer.makeRequest()->append(Recognition::Samples(1024));
    EXPECT_TRUE(recognizer.isAvailable());
    EXPECT_EQ(threadCount(), threads);
    EXPECT_TRUE(children().empty());
}

TEST_F(ListenerRecognizerTest, KeepsTheListenerForTheTasksThatFollow)
{
    ListenerRecognizer recognizer(command("describe"));
    std::vector<std::optional<std::string>> descriptions;
    for (int round = 0; round < 3; ++round) {
        const Recognition recognition(recognizer);
        recognition.request->endAudio();
        EXPECT_TRUE(recognition.waitForEnd());
        descriptions.push_back(recognition.finalText());
    }
    EXPECT_EQ(descriptions[0], descriptions[1]);
    EXPECT_EQ(descriptions[0], descriptions[2]);
    EXPECT_EQ(children().size(), 1U);
}

TEST_F(ListenerRecognizerTest, GivesTheListenerNoFileButItsThreeOwn)
{
    const std::ifstream ours("/proc/self/maps");
    const FileDescriptor inheritable(dup(0));
    ListenerRecognizer recognizer(command("describe"));
    const Recognition recognition(recognizer);
    recognition.request->endAudio();
    EXPECT_TRUE(recognition.waitForEnd());
    auto text = recognition.finalText().value_or("");
    std::istringstream files(text.substr(text.find("files") + 5));
    std::vector<int> numbers { std::istream_iterator<int>(files), {} };
    std::sort(numbers.begin(), numbers.end());
    EXPECT_EQ(numbers, (std::vector { 0, 1, 2 })) << text;
}

TEST_F(ListenerRecognizerTest, EndsAnIdleListenerAndStartsAnotherWhenItIsNeeded)
{
    const auto threads = threadCount();
    ListenerRecognizer recognizer(command("describe"), limits({ .idle = 50ms }));
    std::optional<std::string> description;
    for (int round = 0; round < 3; ++round) {
        const Recognition recognition(recognizer);
        recognition.request->endAudio();
        EXPECT_TRUE(recognition.waitForEnd());
        EXPECT_NE(recognition.finalText(), description);
        description = recognition.finalText();
        EXPECT_TRUE(waitUntil([] { return children().empty(); }));
        EXPECT_TRUE(waitUntil([threads] { return threadCount() == threads; }));
    }
}

TEST_F(ListenerRecognizerTest, KeepsTheListenerWhileATaskOnlyWaitsForAudio)
{
    ListenerRecognizer recognizer(command(), limits({ .idle = 50ms }));
    Recognition recognition(recognizer);
    recognition.append(10);
    EXPECT_TRUE(recognition.waitForText("10"));
    std::this_thread::sleep_for(200ms);
    EXPECT_EQ(recognition.ends(), 0);
    EXPECT_EQ(children().size(), 1U);
}

TEST_F(ListenerRecognizerTest, EndsTheListenerWithItself)
{
    {
        ListenerRecognizer recognizer(command("hang at audio"));
        Recognition recognition(recognizer);
        recognition.append(1024);
        EXPECT_TRUE(waitUntil([] { return children().size() == 1; }));
    }
    EXPECT_TRUE(children().empty());
}

TEST_F(ListenerRecognizerTest, TakesAllCallsAfterItsEnd)
{
    std::optional<ListenerRecognizer> recognizer(std::in_place, command());
    Recognition recognition(*recognizer);
    recognition.append(1024);
    EXPECT_TRUE(recognition.waitForText("1024"));
    recognizer.reset();
    const auto calls = recognition.calls();
    recognition.append(1024);
    recognition.request->endAudio();
    recognition.request->fail();
    recognition.task->cancel();
    EXPECT_EQ(recognition.calls(), calls);
}

TEST_F(ListenerRecognizerTest, LetsANewTaskEndTheOlderWithAnError)
{
    ListenerRecognizer recognizer(command("answer late"));
    Recognition older(recognizer);
    older.append(5 * 1024);
    EXPECT_TRUE(older.waitForText("1024"));
    Recognition newer(recognizer);
    newer.append(10);
    newer.request->endAudio();
    EXPECT_TRUE(older.waitForEnd());
    EXPECT_TRUE(newer.waitForEnd());
    EXPECT_EQ(older.finalText(), std::nullopt);
    EXPECT_EQ(older.errors(), 1);
    EXPECT_EQ(newer.finalText(), "10");
    EXPECT_EQ(newer.texts(), Strings({ "10", "10" }));
    EXPECT_EQ(children().size(), 1U);
}

TEST_F(ListenerRecognizerTest, TellsNothingAfterACancel)
{
    ListenerRecognizer recognizer(command("answer late"));
    Recognition recognition(recognizer);
    recognition.append(8 * 1024);
    EXPECT_TRUE(recognition.waitForText("1024"));
    recognition.task->cancel();
    recognition.task->cancel();
    const auto calls = recognition.calls();
    recognition.append(1024);
    recognition.request->endAudio();
    Recognition next(recognizer);
    next.append(10);
    next.request->endAudio();
    EXPECT_TRUE(next.waitForEnd());
    EXPECT_EQ(next.finalText(), "10");
    EXPECT_LE(recognition.calls(), calls + 1); // one may have been under way
    EXPECT_EQ(children().size(), 1U);
}

TEST_F(ListenerRecognizerTest, CancelsATaskThatIsLetGoOf)
{
    ListenerRecognizer recognizer(command(), limits({ .idle = 50ms }));
    Recognition recognition(recognizer);
    recognition.append(1024);
    EXPECT_TRUE(recognition.waitForText("1024"));
    recognition.task.reset();
    recognition.append(1024);
    EXPECT_TRUE(waitUntil([] { return children().empty(); }));
    EXPECT_EQ(recognition.ends(), 0);
}

TEST_F(ListenerRecognizerTest, MayBeCancelledWithinTheHandler)
{
    ListenerRecognizer recognizer(command());
    std::atomic calls = 0;
    std::unique_ptr<SpeechRecognitionTask> task;
    const auto request = recognizer.makeRequest();
    const auto handler = [&](const std::optional<SpeechRecognitionResult> &, bool) {
        ++calls;
        task->cancel();
    };
    task = recognizer.recognitionTask(request, handler);
    request->append(Recognition::Samples(8 * 1024));
    EXPECT_TRUE(waitUntil([&calls] { return calls == 1; }));
    Recognition next(recognizer);
    next.request->endAudio();
    EXPECT_TRUE(next.waitForEnd());
    EXPECT_EQ(calls, 1);
}

TEST_F(ListenerRecognizerTest, LetsGoOfTheHandlerOnceTheTaskIsOver)
{
    const auto held = std::make_shared<int>();
    ListenerRecognizer recognizer(command());
    const auto handler = [held](const std::optional<SpeechRecognitionResult> &, bool) {};
    const auto request = recognizer.makeRequest();
    const auto ended = recognizer.recognitionTask(request, handler);
    request->endAudio();
    EXPECT_TRUE(waitUntil([&held] { return held.use_count() == 2; })); // ours and `handler`
    const auto cancelled = recognizer.recognitionTask(recognizer.makeRequest(), handler);
    EXPECT_EQ(held.use_count(), 3);
    cancelled->cancel();
    EXPECT_EQ(held.use_count(), 2);
}

TEST_F(ListenerRecognizerTest, IsUnavailableAndFailsWhereThereIsNoListener)
{
    ListenerRecognizer recognizer({ (folder.path() + QStringLiteral("/listener")).toStdString() });
    EXPECT_FALSE(recognizer.isAvailable());
    for (int round = 0; round < 3; ++round) {
        Recognition recognition(recognizer);
        recognition.append(1024);
        EXPECT_TRUE(recognition.waitForEnd());
        EXPECT_EQ(recognition.errors(), 1);
        EXPECT_EQ(recognition.finalText(), std::nullopt);
    }
}

/// A listener that goes wrong somehow.
class MisbehavingListenerTest :
    public ListenerFixture,
    public testing::WithParamInterface<const char *>
{
};

TEST_P(MisbehavingListenerTest, EndsTheTaskWithOneErrorAndTheNextOneHasANewListener)
{
    ListenerRecognizer recognizer(commandOnce(GetParam()), limits());
    Recognition recognition(recognizer);
    recognition.append(2048);
    recognition.request->endAudio();
    EXPECT_TRUE(recognition.waitForEnd());
    EXPECT_EQ(recognition.ends(), 1);
    EXPECT_EQ(recognition.errors(), 1);
    EXPECT_EQ(recognition.finalText(), std::nullopt);
    Recognition next(recognizer);
    next.append(2048);
    next.request->endAudio();
    EXPECT_TRUE(next.waitForEnd());
    EXPECT_EQ(next.errors(), 0);
    EXPECT_EQ(next.finalText(), "2048");
}

TEST_P(MisbehavingListenerTest, MayBeCancelledAtAnyMoment)
{
    ListenerRecognizer recognizer(command(GetParam()), limits());
    for (const auto delay : { 0ms, 1ms, 5ms, 20ms, 50ms }) {
        Recognition recognition(recognizer);
        recognition.append(2048);
        std::this_thread::sleep_for(delay);
        const auto begin = Clock::now();
        recognition.task->cancel();
        EXPECT_LT(Clock::now() - begin, 500ms);
    }
}

INSTANTIATE_TEST_SUITE_P(Behaviours, MisbehavingListenerTest,
                         testing::Values("die at start", "die at audio", "die at end",
                                         "hang at start", "hang at audio", "hang at end",
                                         "talk nonsense", "talk without being asked",
                                         "promise too much", "flood", "answer final to audio",
                                         "answer for another task", "echo"));

TEST_F(ListenerRecognizerTest, EndsTheTaskOnceIfTheListenerAnswersTwice)
{
    ListenerRecognizer recognizer(commandOnce("answer twice"), limits());
    Recognition recognition(recognizer);
    recognition.append(2048);
    recognition.request->endAudio();
    EXPECT_TRUE(recognition.waitForEnd());
    EXPECT_TRUE(waitUntil([] { return children().empty(); })); // it is trusted no more
    EXPECT_EQ(recognition.ends(), 1);
    EXPECT_EQ(recognition.errors(), 0);
    EXPECT_EQ(recognition.finalText(), "2048");
    Recognition next(recognizer);
    next.append(100);
    next.request->endAudio();
    EXPECT_TRUE(next.waitForEnd());
    EXPECT_EQ(next.finalText(), "100");
}

TEST_F(ListenerRecognizerTest, TellsValidUtf8WhateverTheModelWasWrittenIn)
{
    ListenerRecognizer recognizer(command("answer in another encoding"));
    const Recognition recognition(recognizer);
    recognition.request->endAudio();
    EXPECT_TRUE(recognition.waitForEnd());
    EXPECT_EQ(recognition.finalText(), "gr\uFFFD\uFFFDe");
}

TEST_F(ListenerRecognizerTest, NeverKeepsTheAudioThreadWaitingAndGivesUpWhenTooMuchWaits)
{
    ListenerRecognizer recognizer(command("hang at start"), { .queuedSamples = 100 * 1024 });
    Recognition recognition(recognizer);
    auto longest = Clock::duration::zero();
    for (int count = 0; count < 120; ++count) {
        const auto begin = Clock::now();
        recognition.append(1024);
        longest = std::max(longest, Clock::now() - begin);
    }
    EXPECT_LT(longest, 500ms);
    EXPECT_TRUE(recognition.waitForEnd());
    EXPECT_EQ(recognition.errors(), 1);
    EXPECT_TRUE(waitUntil([] { return children().empty(); }));
}

TEST_F(ListenerRecognizerTest, GivesUpAListenerThatHangsThoughItsTaskIsCancelled)
{
    ListenerRecognizer recognizer(command("hang at more audio"), limits());
    Recognition recognition(recognizer);
    recognition.append(2048);
    EXPECT_TRUE(recognition.waitForText("1024")); // it has been asked for the rest as well
    recognition.task->cancel();
    EXPECT_TRUE(waitUntil([] { return children().empty(); }));
}

TEST_F(ListenerRecognizerTest, NoticesWhenAnIdleListenerIsKilled)
{
    ListenerRecognizer recognizer(command("describe"));
    for (int round = 0; round < 2; ++round) {
        const Recognition recognition(recognizer);
        recognition.request->endAudio();
        EXPECT_TRUE(recognition.waitForEnd());
        EXPECT_EQ(recognition.errors(), 0);
        for (const auto child : children())
            kill(child, SIGKILL);
        EXPECT_TRUE(waitUntil([] { return children().empty(); }));
    }
}

TEST_F(ListenerRecognizerTest, SurvivesWhateverIsDoneOnWhateverThread)
{
    std::mt19937 random(7);
    std::optional<ListenerRecognizer> recognizer;
    for (int round = 0; round < 60; ++round) {
        if (round % 20 == 0)
            recognizer.emplace(command(round == 20 ? "answer late" : ""), limits({ .idle = 5ms }));
        Recognition recognition(*recognizer);
        std::thread audio([&recognition, count = random() % 40] {
            for (unsigned piece = 0; piece < count; ++piece)
                recognition.append(1024);
        });
        std::thread other([&recognition, what = random() % 4, delay = random() % 3] {
            std::this_thread::sleep_for(std::chrono::milliseconds(delay));
            if (what == 0)
                recognition.request->endAudio();
            if (what == 1)
                recognition.request->fail();
            if (what >= 2)
                recognition.task->cancel();
        });
        std::this_thread::sleep_for(std::chrono::milliseconds(random() % 8));
        if (random() % 2)
            recognition.task->cancel();
        audio.join();
        other.join();
        EXPECT_LE(recognition.ends(), 1);
        if (round % 20 == 10)
            recognizer.reset();
        if (!recognizer)
            recognizer.emplace(command(), limits());
    }
    Recognition last(*recognizer);
    last.append(77);
    last.request->endAudio();
    EXPECT_TRUE(last.waitForEnd());
    EXPECT_EQ(last.finalText(), "77");
}

} // namespace
