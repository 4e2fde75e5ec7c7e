#include "support/Published.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace
{

class Counter final : public ObservableObject
{
public:
    Published<int> count { this, 1 };
    Published<std::string> title { this };
};

/// Counts the announcements of a model.
class Announcements
{
public:
    explicit Announcements(const ObservableObject &model)
        : m_subscription(
              QObject::connect(&model, &ObservableObject::objectWillChange, [this] { ++m_count; }))
    {
    }

    int count() const { return m_count; }

private:
    int m_count = 0;
    Cancellable m_subscription;
};

using Values = std::vector<int>;

TEST(PublishedTest, HoldsItsInitialValue)
{
    const Counter counter;
    EXPECT_EQ(counter.count.get(), 1);
    EXPECT_EQ(counter.title.get(), "");
}

TEST(PublishedTest, AnnouncesThenStoresThenDelivers)
{
    Counter counter;
    std::vector<std::string> events;
    const Cancellable announced(
        QObject::connect(&counter, &ObservableObject::objectWillChange, [&] {
            events.push_back("announced over " + std::to_string(counter.count.get()));
        }));
    const auto delivered = counter.count.sink([&](int value) {
        events.push_back("delivered " + std::to_string(value) + " over " +
                         std::to_string(counter.count.get()));
    });

    counter.count.set(2);

    const std::vector<std::string> expected { "delivered 1 over 1", "announced over 1",
                                              "delivered 2 over 2" };
    EXPECT_EQ(events, expected);
}

TEST(PublishedTest, DeliversTheCurrentValueAndThenEveryNewOne)
{
    Counter counter;
    counter.count.set(5);
    Values received;

    const auto subscription = counter.count.sink([&](int value) { received.push_back(value); });
    EXPECT_EQ(received, Values({ 5 }));

    counter.count.set(6);
    counter.count.set(7);
    EXPECT_EQ(received, Values({ 5, 6, 7 }));
}

TEST(PublishedTest, AnnouncesAndDeliversEqualValues)
{
    Counter counter;
    Values received;
    const auto subscription = counter.count.sink([&](int value) { received.push_back(value); });
    const Announcements announcements(counter);

    counter.count.set(1);
    counter.count.set(1);

    EXPECT_EQ(announcements.count(), 2);
    EXPECT_EQ(received, Values({ 1, 1, 1 }));
}

TEST(PublishedTest, AnnouncesAndDeliversAnInPlaceEditOnce)
{
    Counter counter;
    std::vector<std::string> received;
    const auto subscription =
        counter.title.sink([&](const std::string &title) { received.push_back(title); });
    const Announcements announcements(counter);

    counter.title.edit([](std::string &title) {
        title += "one";
        title += " two";
        title += " three";
    });

    EXPECT_EQ(announcements.count(), 1);
    EXPECT_EQ(received, std::vector<std::string>({ "", "one two three" }));
}

TEST(PublishedTest, DeliversOnlyTheMemberThatWasWritten)
{
    Counter counter;
    Values received;
    const auto subscription = counter.count.sink([&](int value) { received.push_back(value); });
    const Announcements announcements(counter);

    counter.title.set("new");

    EXPECT_EQ(announcements.count(), 1);
    EXPECT_EQ(received, Values({ 1 }));
}

TEST(PublishedTest, LetsASinkReadTheNewState)
{
    Counter counter;
    std::vector<std::string> seen;
    const auto subscription = counter.title.sink([&](const std::string &) {
        seen.push_back(counter.title.get() + std::to_string(counter.count.get()));
    });

    counter.count.set(2);
    counter.title.set("count ");

    EXPECT_EQ(seen, std::vector<std::string>({ "1", "count 2" }));
}

TEST(PublishedTest, DeliversInTheOrderOfSubscription)
{
    Counter counter;
    std::string order;
    const auto first = counter.count.sink([&](int) { order += 'a'; });
    const auto second = counter.count.sink([&](int) { order += 'b'; });
    order.clear();

    counter.count.set(2);

    EXPECT_EQ(order, "ab");
}

TEST(PublishedTest, KeepsTheStateOfASinkBetweenValues)
{
    Counter counter;
    Values changes;
    const auto subscription =
        counter.count.sink([&changes, last = std::optional<int>()](int value) mutable {
            if (std::exchange(last, value) != value)
                changes.push_back(value);
        });

    counter.count.set(1);
    counter.count.set(2);
    counter.count.set(2);

    EXPECT_EQ(changes, Values({ 1, 2 }));
}

TEST(PublishedTest, LetsASinkSubscribeDuringADelivery)
{
    Counter counter;
    Values received;
    Cancellable late;
    const auto subscription = counter.count.sink([&](int value) {
        if (value == 2)
            late = counter.count.sink([&](int newest) { received.push_back(newest); });
    });

    counter.count.set(2);
    EXPECT_EQ(received, Values({ 2 })) << "immediately, but not by the current delivery";

    counter.count.set(3);
    EXPECT_EQ(received, Values({ 2, 3 }));
}

TEST(PublishedTest, LetsASinkCancelItselfDuringADelivery)
{
    Counter counter;
    Values received;
    Cancellable subscription;
    subscription = counter.count.sink([&](int value) {
        received.push_back(value);
        if (value == 2)
            subscription.cancel();
        received.push_back(-value);
    });

    counter.count.set(2);
    counter.count.set(3);

    EXPECT_EQ(received, Values({ 1, -1, 2, -2 }));
}

TEST(PublishedTest, LetsASinkCancelALaterSink)
{
    Counter counter;
    Values received;
    Cancellable second;
    const auto first = counter.count.sink([&](int) { second.cancel(); });
    second = counter.count.sink([&](int value) { received.push_back(value); });

    counter.count.set(2);

    EXPECT_EQ(received, Values({ 1 }));
}

TEST(PublishedTest, LetsASinkWriteDuringADelivery)
{
    Counter counter;
    const auto evening = counter.count.sink([&](int value) {
        if (value % 2 == 1)
            counter.count.set(value + 1);
    });
    Values received;
    const auto subscription = counter.count.sink([&](int value) { received.push_back(value); });
    EXPECT_EQ(received, Values({ 2 }));

    counter.count.set(5);

    EXPECT_EQ(counter.count.get(), 6);
    EXPECT_EQ(received, Values({ 2, 6, 6 })) << "one delivery per write, none of a stale value";
}

TEST(PublishedTest, LetsASinkWriteAnotherMemberDuringADelivery)
{
    Counter counter;
    const auto naming =
        counter.count.sink([&](int value) { counter.title.set(std::to_string(value)); });

    counter.count.set(12);

    EXPECT_EQ(counter.title.get(), "12");
}

TEST(PublishedTest, PublishesAbsentValues)
{
    class Selection final : public ObservableObject
    {
    public:
        Published<std::optional<int>> selected { this };
    };

    Selection selection;
    std::vector<std::optional<int>> received;
    const auto subscription =
        selection.selected.sink([&](std::optional<int> value) { received.push_back(value); });

    selection.selected.set(3);
    selection.selected.set(std::nullopt);

    EXPECT_EQ(received, std::vector<std::optional<int>>({ std::nullopt, 3, std::nullopt }));
}

} // namespace
