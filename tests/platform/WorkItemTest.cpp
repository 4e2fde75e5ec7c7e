#include "platform/WorkItem.h"

#include "fakes/ManualMainQueue.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <utility>

namespace
{

using namespace std::chrono_literals;

TEST(WorkItemTest, RunsItsWorkOnce)
{
    int runs = 0;
    const WorkItem item([&] { ++runs; });
    item.run();
    item.run();
    EXPECT_EQ(runs, 1);
}

TEST(WorkItemTest, NeverRunsAfterCancellation)
{
    int runs = 0;
    WorkItem item([&] { ++runs; });
    item.cancel();
    item.run();
    EXPECT_EQ(runs, 0);
}

TEST(WorkItemTest, CanBeCancelledTwiceAndAfterItRan)
{
    int runs = 0;
    WorkItem item([&] { ++runs; });
    item.run();
    item.cancel();
    item.cancel();
    EXPECT_EQ(runs, 1);
}

TEST(WorkItemTest, CanBeCancelledWithoutWork)
{
    int runs = 0;
    WorkItem item;
    item.cancel();
    item = WorkItem([&] { ++runs; });
    item.run();
    EXPECT_EQ(runs, 1);
}

TEST(WorkItemTest, SharesItsWorkWithCopies)
{
    int runs = 0;
    WorkItem item([&] { ++runs; });
    const auto copy = item;
    item.cancel();
    copy.run();
    EXPECT_EQ(runs, 0);
}

TEST(WorkItemTest, DoesNotCancelItsWorkWhenDestroyed)
{
    ManualMainQueue queue;
    int runs = 0;
    std::optional<WorkItem> item = queue.asyncAfter(1s, [&] { ++runs; });
    item.reset();
    queue.advance(1s);
    EXPECT_EQ(runs, 1);
}

TEST(WorkItemTest, DoesNotCancelItsWorkWhenReassigned)
{
    ManualMainQueue queue;
    int runs = 0;
    auto item = queue.asyncAfter(1s, [&] { ++runs; });
    item = queue.asyncAfter(1s, [&] { ++runs; });
    queue.advance(1s);
    EXPECT_EQ(runs, 2);
}

TEST(WorkItemTest, CanBeCancelledByItsOwnWork)
{
    int runs = 0;
    WorkItem item;
    item = WorkItem([&, guard = std::make_shared<int>(7)] {
        item.cancel();
        runs += *guard;
    });
    item.run();
    EXPECT_EQ(runs, 7);
}

TEST(WorkItemTest, ReleasesItsWorkAfterRunningOrCancelling)
{
    const auto held = std::make_shared<int>();
    const WorkItem run([held] {});
    WorkItem cancelled([held] {});
    EXPECT_EQ(held.use_count(), 3);
    run.run();
    cancelled.cancel();
    EXPECT_EQ(held.use_count(), 1);
}

} // namespace
