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

    QRect frameOf(std::size_t index) const { return Input::frameIn(*strip, chip(index)); }

    /// Whether the whole chip lies between the strip's left edge and the button at its right.
    bool isFullyVisible(std::size_t index) const
    {
        return frameOf(index).left() >= 9 && frameOf(index).right() < 430 - 9 - 24 - 4;
    }

    void select(std::size_t index)
    {
        store().selectTab(tabID(index));
        settle();
    }

    /// Turns a horizontal wheel over the chips.
    void scrollSideways(int notches)
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
    EXPECT_TRUE(isFullyVisible(0));
    EXPECT_FALSE(isFullyVisible(Count - 1));
}

TEST_F(TabStripScrollingTest, ScrollsToTheActiveTab)
{
    for (const std::size_t index : { 59U, 0U, 30U, 31U, 2U }) {
        select(index);
        EXPECT_TRUE(isFullyVisible(index)) << index;
    }
}

TEST_F(TabStripScrollingTest, ScrollsToANewTab)
{
    pressNewTab();
    EXPECT_TRUE(isFullyVisible(Count));
    EXPECT_TRUE(isFullyVisible(Count) && chip(Count).isChecked());
}

TEST_F(TabStripScrollingTest, ScrollsByTheWheel)
{
    Input::wheel(*strip, -5);
    EXPECT_FALSE(isFullyVisible(0));
    for (int count = 0; count < 200; ++count)
        Input::wheel(*strip, -1);
    EXPECT_TRUE(isFullyVisible(Count - 1));
    for (int count = 0; count < 200; ++count)
        Input::wheel(*strip, 1);
    EXPECT_TRUE(isFullyVisible(0));
}

TEST_F(TabStripScrollingTest, KeepsTheScrollPositionOnOtherChanges)
{
    Input::wheel(*strip, -20);
    const QRect before = frameOf(20);
    store().addBlock();
    store().renameTab(tabID(59), "Other");
    settle();
    EXPECT_EQ(frameOf(20), before);
}

TEST_F(TabStripScrollingTest, KeepsTheRenamedTabVisibleWhileItGrows)
{
    select(59);
    doubleClick(59);
    Input::type(window, "a much longer name for a tab");
    settle();
    EXPECT_TRUE(isFullyVisible(59));
}

TEST_F(TabStripScrollingTest, ScrollsToTheWholeRenamedChip)
{
    Input::wheel(*strip, -1); // leaves a part of the first chip
    ASSERT_FALSE(isFullyVisible(0));
    Input::click(chip(0), { chip(0).width() - 20, 10 });
    QTest::mouseDClick(window.windowHandle(), Qt::LeftButton, {},
                       Input::toWindow(chip(0), { chip(0).width() - 20, 10 }));
    settle();
    ASSERT_TRUE(field());
    EXPECT_TRUE(isFullyVisible(0));
}

TEST_F(TabStripScrollingTest, DoesNotScrollTheRenamedTabAway)
{
    select(30);
    doubleClick(30);
    for (int count = 0; count < 50; ++count)
        Input::wheel(*strip, -1);
    EXPECT_TRUE(isFullyVisible(30));
    scrollSideways(-50);
    EXPECT_TRUE(isFullyVisible(30));
    scrollSideways(100);
    EXPECT_TRUE(isFullyVisible(30));
    EXPECT_TRUE(field());
}

TEST_F(TabStripScrollingTest, KeepsTheRenamedTabVisibleInANarrowerStrip)
{
    select(30);
    Input::wheel(*strip, 2); // so that it is at the right
    select(31);
    doubleClick(31);
    strip->resize(300, TabStrip::Height);
    settle();
    EXPECT_GE(frameOf(31).left(), 9);
    EXPECT_LT(frameOf(31).right(), 300 - 9 - 24 - 4);
}

TEST_F(TabStripScrollingTest, KeepsTheRenamedTabVisibleWhenTabsAreDeleted)
{
    select(30);
    doubleClick(30);
    while (store().tabs().get().size() > 35)
        store().deleteTab(tabID(0));
    settle();
    ASSERT_TRUE(field());
    EXPECT_TRUE(isFullyVisible(5));
    EXPECT_EQ(field()->parentWidget(), &chip(5));
}

TEST_F(TabStripScrollingTest, ScrollsToTheFocusedChip)
{
    chip(40).setFocus(Qt::TabFocusReason);
    strip->revealFocus();
    EXPECT_TRUE(isFullyVisible(40));
}

TEST_F(TabStripScrollingTest, ShowsAllTabsAfterManyAreDeleted)
{
    select(59);
    while (store().tabs().get().size() > 2)
        store().deleteTab(tabID(0));
    settle();
    EXPECT_TRUE(isFullyVisible(0));
    EXPECT_TRUE(isFullyVisible(1));
}

} // namespace
