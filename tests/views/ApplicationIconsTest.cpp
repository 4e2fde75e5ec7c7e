#include "views/ApplicationIcons.h"

#include "views/ApplicationListModel.h"
#include "views/ApplicationPanelFixture.h"

#include <QScrollBar>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <set>
#include <thread>

namespace
{

using namespace std::chrono_literals;

/// A desktop that takes as long for an icon as a slow disk does.
class SlowWorkspace final : public Workspace
{
public:
    void open(const WebAddress & /*address*/) override {}

    void openApplication(const std::string & /*path*/) override {}

    std::optional<ApplicationNames> applicationNames(const std::string & /*path*/) override
    {
        return std::nullopt;
    }

    QImage applicationIcon(const std::string & /*path*/, double size, double /*scale*/) override
    {
        ++iconCount;
        std::this_thread::sleep_for(20ms);
        return { static_cast<int>(size), static_cast<int>(size), QImage::Format_RGB32 };
    }

    void
    listApplications(std::function<void(const std::vector<Application> &)> /*receive*/) override
    {
    }

    int iconCount = 0;
};

class ApplicationIconsTest : public ApplicationPanelFixture
{
protected:
    ApplicationIconsTest() { install(500); }

    int rowsInSight() const
    {
        const auto &view = *list().viewport();
        const int first = list().indexAt({ 1, 1 }).row();
        const int last = list().indexAt({ 1, view.height() - 1 }).row();
        return last - first + 1;
    }

    int iconsAskedFor() const { return static_cast<int>(workspace.iconsAskedFor.size()); }

    bool isNoIconAskedForTwice() const
    {
        const auto &paths = workspace.iconsAskedFor;
        return std::set<std::string>(paths.begin(), paths.end()).size() == paths.size();
    }

    bool waitForIcons(int count) const
    {
        return QTest::qWaitFor([this, count] { return iconsAskedFor() >= count; });
    }
};

TEST_F(ApplicationIconsTest, AreRequestedOnlyForVisibleRows)
{
    open();
    EXPECT_TRUE(waitForIcons(rowsInSight()));
    settle();
    EXPECT_EQ(iconsAskedFor(), rowsInSight());
    EXPECT_LE(iconsAskedFor(), 10);
    EXPECT_EQ(workspace.iconsAskedFor.front(), "/apps/Application 0");
}

TEST_F(ApplicationIconsTest, AreNotRequestedBeforePainting)
{
    openEmpty();
    workspace.finishListing();
    EXPECT_EQ(iconsAskedFor(), 0);
}

TEST_F(ApplicationIconsTest, AreRequestedOnce)
{
    open();
    EXPECT_TRUE(waitForIcons(rowsInSight()));
    const int before = iconsAskedFor();
    for (int count = 0; count < 3; ++count) {
        list().viewport()->repaint();
        settle();
    }
    EXPECT_EQ(iconsAskedFor(), before);
    type("application");
    settle();
    EXPECT_EQ(iconsAskedFor(), before);
}

TEST_F(ApplicationIconsTest, AreRequestedWhenRowsScrollIntoView)
{
    open();
    EXPECT_TRUE(waitForIcons(rowsInSight()));
    auto &bar = *list().verticalScrollBar();
    bar.setValue(bar.maximum());
    EXPECT_TRUE(QTest::qWaitFor([this] {
        return std::ranges::count(workspace.iconsAskedFor, "/apps/Application 499") == 1;
    }));
    bar.setValue(0);
    settle();
    EXPECT_TRUE(isNoIconAskedForTwice());
    EXPECT_LE(iconsAskedFor(), 20);
}

TEST_F(ApplicationIconsTest, AreDeferredWhenSlow)
{
    SlowWorkspace slow;
    ApplicationIcons icons(24, slow, nullptr);
    int moreCount = 0;
    icons.onRepaint = [&moreCount] { ++moreCount; };
    EXPECT_TRUE(icons.icon("/a", 1));
    EXPECT_FALSE(icons.icon("/b", 1));
    EXPECT_FALSE(icons.icon("/c", 1));
    EXPECT_TRUE(icons.icon("/a", 1)) << "had already";
    EXPECT_EQ(slow.iconCount, 1);
    settle();
    EXPECT_EQ(moreCount, 1);
    EXPECT_TRUE(icons.icon("/b", 1));
    EXPECT_FALSE(icons.icon("/c", 1));
    settle();
    EXPECT_EQ(moreCount, 2);
    EXPECT_TRUE(icons.icon("/c", 1));
    settle();
    EXPECT_EQ(moreCount, 2) << "nothing was left to wait for";
    EXPECT_EQ(slow.iconCount, 3);
}

TEST_F(ApplicationIconsTest, LoadSeveralPerFrameWhenQuick)
{
    ApplicationIcons icons(24, workspace, nullptr);
    EXPECT_TRUE(icons.icon("/a", 1));
    EXPECT_TRUE(icons.icon("/b", 1));
}

TEST_F(ApplicationIconsTest, AllLoadEventuallyWhenSlow)
{
    SlowWorkspace slow;
    ApplicationPanel slowPanel(
        {}, {}, slow, [](QDialog &) {}, nullptr);
    auto &model = *slowPanel.findChild<ApplicationListModel *>();
    model.setApplications(workspace.applications);
    slowPanel.show();
    EXPECT_TRUE(QTest::qWaitFor([&slow] { return slow.iconCount >= 8; }));
}

TEST_F(ApplicationIconsTest, MatchTheScreenScale)
{
    ApplicationIcons icons(24, workspace, nullptr);
    EXPECT_EQ(icons.icon("/a", 1)->width(), 24);
    settle();
    EXPECT_EQ(icons.icon("/a", 2)->width(), 48);
    EXPECT_EQ(iconsAskedFor(), 2);
}

TEST_F(ApplicationIconsTest, AreNullWhenTheDesktopHasNone)
{
    workspace.icon = {};
    ApplicationIcons icons(24, workspace, nullptr);
    ASSERT_TRUE(icons.icon("/a", 1));
    EXPECT_TRUE(icons.icon("/a", 1)->isNull());
    EXPECT_EQ(iconsAskedFor(), 1);
}

} // namespace
