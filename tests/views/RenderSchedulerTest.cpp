#include "views/RenderScheduler.h"

#include "fakes/ManualMainQueue.h"
#include "preferences/WindowPreferences.h"

#include <gtest/gtest.h>

#include <optional>

namespace
{

class RenderSchedulerTest : public testing::Test
{
protected:
    RenderSchedulerTest()
    {
        scheduler.emplace(mainQueue, [this] {
            ++renders;
            onTopWhenRendered = preferences.alwaysOnTop.get();
        });
        scheduler->observe(preferences);
    }

    ManualMainQueue mainQueue;
    WindowPreferences preferences;
    int renders = 0;
    bool onTopWhenRendered = true;
    std::optional<RenderScheduler> scheduler;
};

TEST_F(RenderSchedulerTest, RendersLaterWithTheNewState)
{
    preferences.alwaysOnTop.set(false);
    EXPECT_EQ(renders, 0);
    mainQueue.runPending();
    EXPECT_EQ(renders, 1);
    EXPECT_FALSE(onTopWhenRendered);
}

TEST_F(RenderSchedulerTest, RendersOnceForManyChanges)
{
    for (int count = 0; count < 100; ++count)
        preferences.alwaysOnTop.set(count % 2 == 0);
    preferences.showsInfoCard.set(true);
    scheduler->schedule();
    mainQueue.runPending();
    EXPECT_EQ(renders, 1);
    mainQueue.runPending();
    EXPECT_EQ(renders, 1);
}

TEST_F(RenderSchedulerTest, RendersAgainForLaterChanges)
{
    preferences.alwaysOnTop.set(false);
    mainQueue.runPending();
    preferences.alwaysOnTop.set(false);
    mainQueue.runPending();
    EXPECT_EQ(renders, 2);
}

TEST_F(RenderSchedulerTest, RendersAgainForAChangeWhileRendering)
{
    int count = 0;
    RenderScheduler *again = nullptr;
    RenderScheduler changing(mainQueue, [&count, &again] {
        if (++count == 1)
            again->schedule();
    });
    again = &changing;
    changing.schedule();
    mainQueue.runPending();
    EXPECT_EQ(count, 2);
}

TEST_F(RenderSchedulerTest, DoesNotRenderOnceDestroyed)
{
    preferences.alwaysOnTop.set(false);
    scheduler.reset();
    mainQueue.runPending();
    preferences.alwaysOnTop.set(true);
    mainQueue.runPending();
    EXPECT_EQ(renders, 0);
}

} // namespace
