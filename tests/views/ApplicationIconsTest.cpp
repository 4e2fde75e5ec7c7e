#include "views/ApplicationIcons.h"

#include "views/ApplicationPanelFixture.h"

#include <QScrollBar>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <set>

namespace
{

class ApplicationIconsTest : public ApplicationPanelFixture
{
protected:
    static constexpr std::chrono::milliseconds SlowDisk { 20 };

    ApplicationIconsTest() { install(500); }

    int visibleRowCount() const
    {
        const auto &view = *list().viewport();
        const int first = list().indexAt({ 1, 1 }).row();
        const int last = list().indexAt({ 1, view.height() - 1 }).row();
        return last - first + 1;
    }

    int requestCount() const { return static_cast<int>(workspace.requestedIcons.size()); }

    bool hasNoDuplicateRequest() const
    {
        const auto &paths = workspace.requestedIcons;
        return std::set<std::string>(paths.begin(), paths.end()).size() == paths.size();
    }

    bool waitForIcons(int count)
    {
        return QTest::qWaitFor([this, count] {
            mainQueue.runPending();
            return requestCount() >= count;
        });
    }
};

TEST_F(ApplicationIconsTest, AreRequestedOnlyForVisibleRows)
{
    open();
    EXPECT_TRUE(waitForIcons(visibleRowCount()));
    settle();
    EXPECT_EQ(requestCount(), visibleRowCount());
    EXPECT_LE(requestCount(), 10);
    EXPECT_EQ(workspace.requestedIcons.front(), "/apps/Application 0");
}

TEST_F(ApplicationIconsTest, AreNotRequestedBeforePainting)
{
    openEmpty();
    workspace.finishListing();
    EXPECT_EQ(requestCount(), 0);
}

TEST_F(ApplicationIconsTest, AreRequestedOnce)
{
    open();
    EXPECT_TRUE(waitForIcons(visibleRowCount()));
    const int before = requestCount();
    for (int count = 0; count < 3; ++count) {
        list().viewport()->repaint();
        settle();
    }
    EXPECT_EQ(requestCount(), before);
    type("application");
    settle();
    EXPECT_EQ(requestCount(), before);
}

TEST_F(ApplicationIconsTest, AreRequestedWhenRowsScrollIntoView)
{
    open();
    EXPECT_TRUE(waitForIcons(visibleRowCount()));
    auto &bar = *list().verticalScrollBar();
    bar.setValue(bar.maximum());
    EXPECT_TRUE(QTest::qWaitFor([this] {
        mainQueue.runPending();
        return std::ranges::count(workspace.requestedIcons, "/apps/Application 499") == 1;
    }));
    bar.setValue(0);
    settle();
    EXPECT_TRUE(hasNoDuplicateRequest());
    EXPECT_LE(requestCount(), 20);
}

TEST_F(ApplicationIconsTest, AreDeferredWhenSlow)
{
    workspace.iconDelay = SlowDisk;
    ApplicationIcons icons(24, workspace, mainQueue, nullptr);
    int moreCount = 0;
    icons.onRepaint = [&moreCount] { ++moreCount; };
    EXPECT_TRUE(icons.icon("/a", 1));
    EXPECT_FALSE(icons.icon("/b", 1));
    EXPECT_FALSE(icons.icon("/c", 1));
    EXPECT_TRUE(icons.icon("/a", 1)) << "already loaded";
    EXPECT_EQ(requestCount(), 1);
    settle();
    EXPECT_EQ(moreCount, 1);
    EXPECT_TRUE(icons.icon("/b", 1));
    EXPECT_FALSE(icons.icon("/c", 1));
    settle();
    EXPECT_EQ(moreCount, 2);
    EXPECT_TRUE(icons.icon("/c", 1));
    settle();
    EXPECT_EQ(moreCount, 2) << "nothing is left to load";
    EXPECT_EQ(requestCount(), 3);
}

TEST_F(ApplicationIconsTest, LoadSeveralPerFrameWhenQuick)
{
    ApplicationIcons icons(24, workspace, mainQueue, nullptr);
    EXPECT_TRUE(icons.icon("/a", 1));
    EXPECT_TRUE(icons.icon("/b", 1));
}

TEST_F(ApplicationIconsTest, AllLoadEventuallyWhenSlow)
{
    workspace.iconDelay = SlowDisk;
    open();
    EXPECT_TRUE(waitForIcons(8));
}

TEST_F(ApplicationIconsTest, MatchTheScreenScale)
{
    ApplicationIcons icons(24, workspace, mainQueue, nullptr);
    EXPECT_EQ(icons.icon("/a", 1)->width(), 24);
    settle();
    EXPECT_EQ(icons.icon("/a", 2)->width(), 48);
    EXPECT_EQ(requestCount(), 2);
}

TEST_F(ApplicationIconsTest, AreNullWhenTheDesktopHasNone)
{
    workspace.icon = {};
    ApplicationIcons icons(24, workspace, mainQueue, nullptr);
    ASSERT_TRUE(icons.icon("/a", 1));
    EXPECT_TRUE(icons.icon("/a", 1)->isNull());
    EXPECT_EQ(requestCount(), 1);
}

} // namespace
