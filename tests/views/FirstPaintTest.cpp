#include "views/FirstPaint.h"

#include "fakes/ManualMainQueue.h"
#include "views/Input.h"

#include <gtest/gtest.h>

#include <optional>

namespace
{

class FirstPaintTest : public testing::Test
{
protected:
    FirstPaintTest()
    {
        afterFirstPaint(*widget, mainQueue, [this] { ++runs; });
    }

    ManualMainQueue mainQueue;
    std::optional<QWidget> widget { std::in_place };
    int runs = 0;
};

TEST_F(FirstPaintTest, RunsTheWorkAfterThePaintEventAndOnlyOnce)
{
    mainQueue.runPending();
    EXPECT_EQ(runs, 0);

    Input::show(*widget);
    widget->repaint();
    EXPECT_EQ(runs, 0) << "not within the paint event";
    mainQueue.runPending();
    EXPECT_EQ(runs, 1);

    widget->repaint();
    mainQueue.runPending();
    EXPECT_EQ(runs, 1);
}

TEST_F(FirstPaintTest, DoesNotRunTheWorkOfADestroyedWidget)
{
    Input::show(*widget);
    widget->repaint();
    widget.reset();
    mainQueue.runPending();
    EXPECT_EQ(runs, 0);
}

} // namespace
