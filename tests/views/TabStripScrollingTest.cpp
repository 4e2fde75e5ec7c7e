#include "views/TabStripFixture.h"

#include <gtest/gtest.h>

namespace
{

class TabStripScrollingTest : public TabStripFixture
{
protected:
    TabStripScrollingTest()
    {
        std::vector<PromptTab> tabs;
        for (int number = 0; number < Count; ++number)
            tabs.push_back(tabOf("Tab number " + std::to_string(number)));
        openStrip(tabs);
    }

    QRect placeOf(std::size_t index) const
    {
        return { chip(index).mapTo(strip, QPoint()), chip(index).size() };
    }

    /// Whether the whole chip lies between the strip's left edge and the button at its right.
    bool isInSight(std::size_t index) const
    {
        return placeOf(index).left() >= 9 && placeOf(index).right() < 430 - 9 - 24 - 4;
    }

    void select(std::size_t index)
    {
        store().selectTab(store().tabs().get()[index].id);
        settle();
    }

    static constexpr int Count = 60;
};

TEST_F(TabStripScrollingTest, BeginsWithTheFirstTab)
{
    EXPECT_TRUE(isInSight(0));
    EXPECT_FALSE(isInSight(Count - 1));
}

TEST_F(TabStripScrollingTest, ShowsTheTabThatBecomesActive)
{
    for (const std::size_t index : { 59U, 0U, 30U, 31U, 2U }) {
        select(index);
        EXPECT_TRUE(isInSight(index)) << index;
    }
}

TEST_F(TabStripScrollingTest, ShowsANewTab)
{
    Input::click(*Input::button(*strip, "New tab"));
    settle();
    EXPECT_TRUE(isInSight(Count));
    EXPECT_TRUE(isInSight(Count) && chip(Count).isChecked());
}

TEST_F(TabStripScrollingTest, IsScrolledByTheWheel)
{
    Input::wheel(*strip, -5);
    EXPECT_FALSE(isInSight(0));
    for (int count = 0; count < 200; ++count)
        Input::wheel(*strip, -1);
    EXPECT_TRUE(isInSight(Count - 1));
    for (int count = 0; count < 200; ++count)
        Input::wheel(*strip, 1);
    EXPECT_TRUE(isInSight(0));
}

TEST_F(TabStripScrollingTest, StaysWhereItIsScrolledWhenSomethingElseChanges)
{
    Input::wheel(*strip, -20);
    const QRect before = placeOf(20);
    store().addBlock();
    store().renameTab(store().tabs().get()[59].id, "Other");
    settle();
    EXPECT_EQ(placeOf(20), before);
}

TEST_F(TabStripScrollingTest, KeepsTheRenamedTabInSightWhileItGrows)
{
    select(59);
    doubleClick(59);
    Input::type(window, "a much longer name for a tab");
    settle();
    EXPECT_TRUE(isInSight(59));
}

TEST_F(TabStripScrollingTest, ShowsTheChipThatTheKeyboardReaches)
{
    chip(40).setFocus(Qt::TabFocusReason);
    strip->revealFocus();
    EXPECT_TRUE(isInSight(40));
}

TEST_F(TabStripScrollingTest, HasRoomForAllTabsAfterManyWentAway)
{
    select(59);
    while (store().tabs().get().size() > 2)
        store().deleteTab(store().tabs().get().front().id);
    settle();
    EXPECT_TRUE(isInSight(0));
    EXPECT_TRUE(isInSight(1));
}

} // namespace
