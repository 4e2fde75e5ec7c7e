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

    /// Turns a wheel that scrolls to the sides, over the middle of the chips.
    void turnSideways(int notches)
    {
        auto *const hit = window.childAt(200, 19);
        QWheelEvent event(hit->mapFrom(&window, QPointF(200, 19)),
                          window.mapToGlobal(QPointF(200, 19)), {}, { 120 * notches, 0 },
                          Qt::NoButton, {}, Qt::NoScrollPhase, false);
        QSpontaneKeyEvent::setSpontaneous(&event);
        qApp->notify(hit, &event);
    }

    static constexpr int Count = 60;
};

TEST_F(TabStripScrollingTest, StartsAtTheFirstTab)
{
    EXPECT_TRUE(isInSight(0));
    EXPECT_FALSE(isInSight(Count - 1));
}

TEST_F(TabStripScrollingTest, ScrollsToTheActiveTab)
{
    for (const std::size_t index : { 59U, 0U, 30U, 31U, 2U }) {
        select(index);
        EXPECT_TRUE(isInSight(index)) << index;
    }
}

TEST_F(TabStripScrollingTest, ScrollsToANewTab)
{
    Input::click(*Input::button(*strip, "New tab"));
    settle();
    EXPECT_TRUE(isInSight(Count));
    EXPECT_TRUE(isInSight(Count) && chip(Count).isChecked());
}

TEST_F(TabStripScrollingTest, ScrollsByTheWheel)
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

TEST_F(TabStripScrollingTest, KeepsTheScrollPositionOnOtherChanges)
{
    Input::wheel(*strip, -20);
    const QRect before = placeOf(20);
    store().addBlock();
    store().renameTab(store().tabs().get()[59].id, "Other");
    settle();
    EXPECT_EQ(placeOf(20), before);
}

TEST_F(TabStripScrollingTest, KeepsTheRenamedTabVisibleWhileItGrows)
{
    select(59);
    doubleClick(59);
    Input::type(window, "a much longer name for a tab");
    settle();
    EXPECT_TRUE(isInSight(59));
}

TEST_F(TabStripScrollingTest, ScrollsToTheWholeRenamedChip)
{
    Input::wheel(*strip, -1); // which leaves a part of the first one
    ASSERT_FALSE(isInSight(0));
    Input::click(chip(0), { chip(0).width() - 20, 10 });
    QTest::mouseDClick(window.windowHandle(), Qt::LeftButton, {},
                       Input::placeInWindow(chip(0), { chip(0).width() - 20, 10 }));
    settle();
    ASSERT_TRUE(field());
    EXPECT_TRUE(isInSight(0));
}

TEST_F(TabStripScrollingTest, DoesNotScrollTheRenamedTabAway)
{
    select(30);
    doubleClick(30);
    for (int count = 0; count < 50; ++count)
        Input::wheel(*strip, -1);
    EXPECT_TRUE(isInSight(30));
    turnSideways(-50);
    EXPECT_TRUE(isInSight(30));
    turnSideways(100);
    EXPECT_TRUE(isInSight(30));
    EXPECT_TRUE(field());
}

TEST_F(TabStripScrollingTest, KeepsTheRenamedTabVisibleInANarrowerStrip)
{
    select(30);
    Input::wheel(*strip, 2); // so that it lies at the right
    select(31);
    doubleClick(31);
    strip->resize(300, TabStrip::Height);
    settle();
    EXPECT_GE(placeOf(31).left(), 9);
    EXPECT_LT(placeOf(31).right(), 300 - 9 - 24 - 4);
}

TEST_F(TabStripScrollingTest, KeepsTheRenamedTabVisibleWhenTabsAreDeleted)
{
    select(30);
    doubleClick(30);
    while (store().tabs().get().size() > 35)
        store().deleteTab(store().tabs().get().front().id);
    settle();
    ASSERT_TRUE(field());
    EXPECT_TRUE(isInSight(5));
    EXPECT_EQ(field()->parentWidget(), &chip(5));
}

TEST_F(TabStripScrollingTest, ScrollsToTheFocusedChip)
{
    chip(40).setFocus(Qt::TabFocusReason);
    strip->revealFocus();
    EXPECT_TRUE(isInSight(40));
}

TEST_F(TabStripScrollingTest, ShowsAllTabsAfterManyAreDeleted)
{
    select(59);
    while (store().tabs().get().size() > 2)
        store().deleteTab(store().tabs().get().front().id);
    settle();
    EXPECT_TRUE(isInSight(0));
    EXPECT_TRUE(isInSight(1));
}

} // namespace
