#include "support/Cancellable.h"

#include "support/Published.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

namespace
{

static_assert(!std::is_copy_constructible_v<Cancellable>);
static_assert(!std::is_copy_assignable_v<Cancellable>);
static_assert(std::is_nothrow_move_constructible_v<Cancellable>);
static_assert(std::is_nothrow_move_assignable_v<Cancellable>);

class CountModel final : public ObservableObject
{
public:
    Published<int> count { this };
};

class CancellableTest : public testing::Test
{
protected:
    Cancellable subscribe()
    {
        auto token = counter.count.sink([this](int) { ++deliveries; });
        deliveries = 0;
        return token;
    }

    /// The number of live subscriptions.
    int deliveriesOfOneWrite()
    {
        deliveries = 0;
        counter.count.set(0);
        return deliveries;
    }

    CountModel counter;
    int deliveries = 0;
};

TEST_F(CancellableTest, KeepsItsSubscriptionWhileItLives)
{
    const auto token = subscribe();
    EXPECT_EQ(deliveriesOfOneWrite(), 1);
    EXPECT_EQ(deliveriesOfOneWrite(), 1);
}

TEST_F(CancellableTest, EndsItsSubscriptionWhenDestroyed)
{
    std::optional<Cancellable> token(subscribe());
    token.reset();
    EXPECT_EQ(deliveriesOfOneWrite(), 0);
}

TEST_F(CancellableTest, EndsItsSubscriptionWhenCancelled)
{
    auto token = subscribe();
    token.cancel();
    EXPECT_EQ(deliveriesOfOneWrite(), 0);
}

TEST_F(CancellableTest, CancelsTwiceWithoutAffectingOthers)
{
    auto token = subscribe();
    const auto other = subscribe();
    token.cancel();
    token.cancel();
    EXPECT_EQ(deliveriesOfOneWrite(), 1);
}

TEST_F(CancellableTest, CancelsNothingWhenEmpty)
{
    const auto other = subscribe();
    Cancellable empty;
    empty.cancel();
    EXPECT_EQ(deliveriesOfOneWrite(), 1);
}

TEST_F(CancellableTest, MovesItsSubscription)
{
    std::optional<Cancellable> origin(subscribe());
    std::optional<Cancellable> destination(std::move(*origin));
    origin.reset();
    EXPECT_EQ(deliveriesOfOneWrite(), 1);
    destination.reset();
    EXPECT_EQ(deliveriesOfOneWrite(), 0);
}

TEST_F(CancellableTest, EndsItsOwnSubscriptionWhenAnotherIsAssigned)
{
    auto token = subscribe();
    auto other = subscribe();
    token = std::move(other);
    EXPECT_EQ(deliveriesOfOneWrite(), 1);
    token.cancel();
    EXPECT_EQ(deliveriesOfOneWrite(), 0);
}

TEST_F(CancellableTest, SurvivesSelfAssignment)
{
    auto token = subscribe();
    auto &same = token;
    token = std::move(same);
    EXPECT_EQ(deliveriesOfOneWrite(), 1);
}

TEST_F(CancellableTest, DestroysTheSink)
{
    const auto held = std::make_shared<int>(0);
    auto token = counter.count.sink([held](int) {});
    EXPECT_GT(held.use_count(), 1);
    token.cancel();
    EXPECT_EQ(held.use_count(), 1);
}

TEST(CancellableLifetimeTest, OutlivesItsModel)
{
    Cancellable token;
    int deliveries = 0;
    {
        const CountModel counter;
        token = counter.count.sink([&](int) { ++deliveries; });
    }
    token.cancel();
    EXPECT_EQ(deliveries, 1);
}

} // namespace
