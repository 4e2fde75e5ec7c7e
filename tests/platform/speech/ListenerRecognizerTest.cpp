#include "platform/speech/ListenerFixture.h"
#include "support/FileDescriptor.h"

#include <algorithm>
#include <atomic>
#include <csignal>
#include <optional>
#include <random>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace
{

using namespace std::chrono_literals;
using Strings = std::vector<std::string>;

constexpr auto Long = 60 * 16'000; // samples

class ListenerRecognizerTest : public ListenerFixture
{
};

// Must be the first test, because Qt ignores SIGPIPE only at the first write of a process.
TEST_F(ListenerRecognizerTest, KeepsTheHandlerOfSigpipe)
{
    const auto handler = +[](int) {};
    std::signal(SIGPIPE, handler);
    ListenerRecognizer recognizer(command(), mainQueue);
    Recognition recognition(recognizer);
    recognition.append(1024);
    EXPECT_TRUE(recognition.waitForText("1024"));
    EXPECT_EQ(std::signal(SIGPIPE, SIG_IGN), handler);
}

TEST_F(ListenerRecognizerTest, ReportsPartialResultsAndThenTheFinalOne)
{
    ListenerRecognizer recognizer(command(), mainQueue);
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

TEST_F(ListenerRecognizerTest, KeepsAudioWhileTheModelLoads)
{
    ListenerRecognizer recognizer(command("load slowly"), mainQueue);
    Recognition recognition(recognizer);
    for (int count = 0; count < 20; ++count)
        recognition.append(1024);
    recognition.request->endAudio();
    EXPECT_TRUE(recognition.waitForEnd());
    EXPECT_EQ(recognition.finalText(), "20480");
}

TEST_F(ListenerRecognizerTest, KeepsAudioFromBeforeTheTask)
{
    ListenerRecognizer recognizer(command(), mainQueue);
    const auto request = recognizer.makeRequest(Recognition::TextBefore);
    request->append(Recognition::Samples(500));
    request->endAudio();
    request->append(Recognition::Samples(500)); // too late
    const Recognition recognition(recognizer, request);
    EXPECT_TRUE(recognition.waitForEnd());
    EXPECT_EQ(recognition.finalText(), "500");
}

TEST_F(ListenerRecognizerTest, AcceptsOneMinuteInOnePiece)
{
    ListenerRecognizer recognizer(command(), mainQueue);
    Recognition recognition(recognizer);
    recognition.append(Long);
    recognition.request->endAudio();
    EXPECT_TRUE(recognition.waitForEnd());
    EXPECT_EQ(recognition.finalText(), std::to_string(Long));
}

TEST_F(ListenerRecognizerTest, ReportsAFinalResultWithoutAudio)
{
    ListenerRecognizer recognizer(command(), mainQueue);
    const Recognition recognition(recognizer);
    recognition.request->endAudio();
    EXPECT_TRUE(recognition.waitForEnd());
    EXPECT_EQ(recognition.finalText(), "0");
}

TEST_F(ListenerRecognizerTest, ReportsTheTextAndAnErrorWhenTheMicrophoneFails)
{
    ListenerRecognizer recognizer(command(), mainQueue);
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
    ListenerRecognizer recognizer(command(), mainQueue);
    recognizer.makeRequest(Recognition::TextBefore)->append(Recognition::Samples(1024));
    EXPECT_TRUE(recognizer.isAvailable());
    EXPECT_EQ(threadCount(), threads);
    EXPECT_TRUE(children().empty());
}

TEST_F(ListenerRecognizerTest, ReusesTheListenerForLaterTasks)
{
    ListenerRecognizer recognizer(command("describe"), mainQueue);
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

TEST_F(ListenerRecognizerTest, PassesOnlyTheStandardStreamsToTheListener)
{
    const std::ifstream ours("/proc/self/maps");
    const FileDescriptor inheritable(dup(0));
    ListenerRecognizer recognizer(command("describe"), mainQueue);
    const Recognition recognition(recognizer);
    recognition.request->endAudio();
    EXPECT_TRUE(recognition.waitForEnd());
    auto text = recognition.finalText().value_or("");
    std::istringstream files(text.substr(text.find("files") + 5));
    std::vector<int> numbers { std::istream_iterator<int>(files), {} };
    std::sort(numbers.begin(), numbers.end());
    EXPECT_EQ(numbers, (std::vector { 0, 1, 2 })) << text;
}

TEST_F(ListenerRecognizerTest, StopsAnIdleListenerAndStartsAnotherOnDemand)
{
    const auto threads = threadCount();
    ListenerRecognizer recognizer(command("describe"), mainQueue, limits({ .idle = 50ms }));
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

TEST_F(ListenerRecognizerTest, KeepsTheListenerWhileATaskWaitsForAudio)
{
    ListenerRecognizer recognizer(command(), mainQueue, limits({ .idle = 50ms }));
    Recognition recognition(recognizer);
    recognition.append(10);
    EXPECT_TRUE(recognition.waitForText("10"));
    QTest::qWait(200);
    EXPECT_EQ(recognition.ends(), 0);
    EXPECT_EQ(children().size(), 1U);
}

TEST_F(ListenerRecognizerTest, StopsTheListenerInTheDestructor)
{
    {
        ListenerRecognizer recognizer(command("hang at audio"), mainQueue);
        Recognition recognition(recognizer);
        recognition.append(1024);
        EXPECT_TRUE(waitUntil([] { return children().size() == 1; }));
    }
    EXPECT_TRUE(children().empty());
}

TEST_F(ListenerRecognizerTest, IgnoresCallsAfterItsDestruction)
{
    std::optional<ListenerRecognizer> recognizer(std::in_place, command(), mainQueue);
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

TEST_F(ListenerRecognizerTest, FailsATaskWhenANewOneBegins)
{
    ListenerRecognizer recognizer(command("answer late"), mainQueue);
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

TEST_F(ListenerRecognizerTest, ReportsNothingAfterACancel)
{
    ListenerRecognizer recognizer(command("answer late"), mainQueue);
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

TEST_F(ListenerRecognizerTest, CancelsATaskThatIsDestroyed)
{
    ListenerRecognizer recognizer(command(), mainQueue, limits({ .idle = 50ms }));
    Recognition recognition(recognizer);
    recognition.append(1024);
    EXPECT_TRUE(recognition.waitForText("1024"));
    recognition.task.reset();
    recognition.append(1024);
    EXPECT_TRUE(waitUntil([] { return children().empty(); }));
    EXPECT_EQ(recognition.ends(), 0);
}

TEST_F(ListenerRecognizerTest, AllowsCancellingInTheHandler)
{
    ListenerRecognizer recognizer(command(), mainQueue);
    std::atomic calls = 0;
    std::unique_ptr<SpeechRecognitionTask> task;
    const auto request = recognizer.makeRequest(Recognition::TextBefore);
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

TEST_F(ListenerRecognizerTest, ReleasesTheHandlerWhenTheTaskIsOver)
{
    const auto held = std::make_shared<int>();
    ListenerRecognizer recognizer(command(), mainQueue);
    const auto handler = [held](const std::optional<SpeechRecognitionResult> &, bool) {};
    const auto request = recognizer.makeRequest(Recognition::TextBefore);
    const auto ended = recognizer.recognitionTask(request, handler);
    request->endAudio();
    EXPECT_TRUE(waitUntil([&held] { return held.use_count() == 2; })); // ours and `handler`
    const auto cancelled =
        recognizer.recognitionTask(recognizer.makeRequest(Recognition::TextBefore), handler);
    EXPECT_EQ(held.use_count(), 3);
    cancelled->cancel();
    EXPECT_EQ(held.use_count(), 2);
}

TEST_F(ListenerRecognizerTest, IsUnavailableAndFailsWithoutAListener)
{
    ListenerRecognizer recognizer({ (folder.path() + QStringLiteral("/listener")).toStdString() },
                                  mainQueue);
    EXPECT_FALSE(recognizer.isAvailable());
    for (int round = 0; round < 3; ++round) {
        Recognition recognition(recognizer);
        recognition.append(1024);
        EXPECT_TRUE(recognition.waitForEnd());
        EXPECT_EQ(recognition.errors(), 1);
        EXPECT_EQ(recognition.finalText(), std::nullopt);
    }
}

/// Each test runs with every kind of misbehaving listener.
class MisbehavingListenerTest :
    public ListenerFixture,
    public testing::WithParamInterface<const char *>
{
};

TEST_P(MisbehavingListenerTest, ReportsOneErrorAndStartsANewListenerForTheNextTask)
{
    ListenerRecognizer recognizer(commandOnce(GetParam()), mainQueue, limits());
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

TEST_P(MisbehavingListenerTest, AllowsCancellingAtAnyTime)
{
    ListenerRecognizer recognizer(command(GetParam()), mainQueue, limits());
    for (const int delay : { 0, 1, 5, 20, 50 }) {
        Recognition recognition(recognizer);
        recognition.append(2048);
        QTest::qWait(delay);
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

TEST_F(ListenerRecognizerTest, EndsTheTaskOnceWhenTheListenerAnswersTwice)
{
    ListenerRecognizer recognizer(commandOnce("answer twice"), mainQueue, limits());
    Recognition recognition(recognizer);
    recognition.append(2048);
    recognition.request->endAudio();
    EXPECT_TRUE(recognition.waitForEnd());
    EXPECT_TRUE(waitUntil([] { return children().empty(); })); // it broke the protocol
    EXPECT_EQ(recognition.ends(), 1);
    EXPECT_EQ(recognition.errors(), 0);
    EXPECT_EQ(recognition.finalText(), "2048");
    Recognition next(recognizer);
    next.append(100);
    next.request->endAudio();
    EXPECT_TRUE(next.waitForEnd());
    EXPECT_EQ(next.finalText(), "100");
}

TEST_F(ListenerRecognizerTest, ReportsValidUtf8ForAnyModelEncoding)
{
    ListenerRecognizer recognizer(command("answer in another encoding"), mainQueue);
    const Recognition recognition(recognizer);
    recognition.request->endAudio();
    EXPECT_TRUE(recognition.waitForEnd());
    EXPECT_EQ(recognition.finalText(), "gr\uFFFD\uFFFDe");
}

TEST_F(ListenerRecognizerTest, FailsWithoutBlockingAppendWhenTooMuchAudioWaits)
{
    ListenerRecognizer recognizer(command("hang at start"), mainQueue,
                                  { .queuedSamples = 100 * 1024 });
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

TEST_F(ListenerRecognizerTest, StopsAListenerThatHangsAfterACancel)
{
    ListenerRecognizer recognizer(command("hang at more audio"), mainQueue, limits());
    Recognition recognition(recognizer);
    recognition.append(2048);
    EXPECT_TRUE(recognition.waitForText("1024")); // the rest has been sent too
    recognition.task->cancel();
    EXPECT_TRUE(waitUntil([] { return children().empty(); }));
}

TEST_F(ListenerRecognizerTest, StartsANewListenerAfterAnIdleOneWasKilled)
{
    ListenerRecognizer recognizer(command("describe"), mainQueue);
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

TEST_F(ListenerRecognizerTest, SurvivesRandomCallsFromSeveralThreads)
{
    std::mt19937 random(7);
    std::optional<ListenerRecognizer> recognizer;
    for (int round = 0; round < 60; ++round) {
        if (round % 20 == 0)
            recognizer.emplace(command(round == 20 ? "answer late" : ""), mainQueue,
                               limits({ .idle = 5ms }));
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
        });
        QTest::qWait(static_cast<int>(random() % 8));
        if (random() % 4 > 0)
            recognition.task->cancel();
        audio.join();
        other.join();
        EXPECT_LE(recognition.ends(), 1);
        if (round % 20 == 10)
            recognizer.reset();
        if (!recognizer)
            recognizer.emplace(command(), mainQueue, limits());
    }
    Recognition last(*recognizer);
    last.append(77);
    last.request->endAudio();
    EXPECT_TRUE(last.waitForEnd());
    EXPECT_EQ(last.finalText(), "77");
}

} // namespace
