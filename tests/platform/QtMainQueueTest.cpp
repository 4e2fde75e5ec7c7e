#include "platform/desktop/QtMainQueue.h"

#include "views/Input.h"

#include <QElapsedTimer>
#include <QThread>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <thread>

namespace
{

using namespace std::chrono_literals;

class QtMainQueueTest : public testing::Test
{
protected:
    std::function<void()> note(const std::string &what)
    {
        return [this, what] { notes += what; };
    }

    bool waitFor(const std::string &expected)
    {
        return QTest::qWaitFor([this, &expected] { return notes == expected; });
    }

    std::string notes;
    std::optional<QtMainQueue> queue { std::in_place };
};

TEST_F(QtMainQueueTest, RunsWorkLaterAndInOrder)
{
    queue->async(note("a"));
    queue->async(note("b"));
    EXPECT_EQ(notes, "");
    QCoreApplication::processEvents();
    EXPECT_EQ(notes, "ab");
}

TEST_F(QtMainQueueTest, RunsWorkOfAnyThreadOnTheMainThread)
{
    const auto *const mainThread = QThread::currentThread();
    const QThread *ranOn = nullptr;
    std::thread([this, &ranOn] {
        queue->async([&ranOn] { ranOn = QThread::currentThread(); });
    }).join();
    EXPECT_EQ(ranOn, nullptr);
    EXPECT_TRUE(QTest::qWaitFor([&ranOn] { return ranOn != nullptr; }));
    EXPECT_EQ(ranOn, mainThread);
}

TEST_F(QtMainQueueTest, RunsDelayedWorkAfterItsDelay)
{
    QElapsedTimer timer;
    timer.start();
    auto later = queue->asyncAfter(60ms, note("later"));
    EXPECT_TRUE(waitFor("later"));
    EXPECT_GE(timer.elapsed(), 59);
}

TEST_F(QtMainQueueTest, RunsDelayedWorkInTheOrderOfItsTime)
{
    queue->asyncAfter(60ms, note("c"));
    queue->asyncAfter(20ms, note("b"));
    queue->async(note("a"));
    EXPECT_TRUE(waitFor("abc"));
}

TEST_F(QtMainQueueTest, NeverRunsWorkWithinTheCall)
{
    queue->asyncAfter(0ms, note("a"));
    EXPECT_EQ(notes, "");
    EXPECT_TRUE(waitFor("a"));
}

TEST_F(QtMainQueueTest, DoesNotRunCancelledWork)
{
    auto cancelled = queue->asyncAfter(10ms, note("cancelled"));
    queue->asyncAfter(30ms, note("a"));
    cancelled.cancel();
    EXPECT_TRUE(waitFor("a"));
    EXPECT_EQ(notes, "a");
}

TEST_F(QtMainQueueTest, RunsWorkWhoseItemWasDestroyed)
{
    {
        const auto item = queue->asyncAfter(10ms, note("a"));
    }
    EXPECT_TRUE(waitFor("a"));
}

TEST_F(QtMainQueueTest, RunsNothingAfterItsDestruction)
{
    queue->async(note("a"));
    queue->asyncAfter(5ms, note("b"));
    queue.reset();
    QTest::qWait(20);
    EXPECT_EQ(notes, "");
}

TEST_F(QtMainQueueTest, AcceptsWorkFromRunningWork)
{
    queue->async([this] {
        notes += "a";
        queue->async(note("b"));
        EXPECT_EQ(notes, "a");
    });
    EXPECT_TRUE(waitFor("ab"));
}

} // namespace
