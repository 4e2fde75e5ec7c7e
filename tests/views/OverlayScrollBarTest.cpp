#include "views/OverlayScrollBar.h"

#include "views/Input.h"
#include "views/Picture.h"

#include <gtest/gtest.h>

namespace
{

class OverlayScrollBarTest : public testing::Test
{
protected:
    OverlayScrollBarTest()
    {
        bar.resize(OverlayScrollBar::Thickness, 200);
        bar.setPageStep(200);
        bar.setRange(0, 600);
    }

    QRectF thumb()
    {
        const Picture picture(bar, Background);
        return picture.inkIn(picture.rect(), Background);
    }

    OverlayScrollBar bar { Qt::Vertical, nullptr };
};

TEST_F(OverlayScrollBarTest, ThumbShowsSizeAndPosition)
{
    EXPECT_LE(thumb().top(), 3);
    EXPECT_NEAR(thumb().height(), 50, 4);
    bar.setValue(300);
    EXPECT_NEAR(thumb().center().y(), 100, 3);
    bar.setValue(600);
    EXPECT_GE(thumb().bottom(), 197);
}

TEST_F(OverlayScrollBarTest, IsHiddenWithoutAScrollRange)
{
    EXPECT_FALSE(bar.isHidden());
    bar.setRange(0, 0);
    EXPECT_TRUE(bar.isHidden());
    bar.setRange(0, 1);
    EXPECT_FALSE(bar.isHidden());
}

TEST_F(OverlayScrollBarTest, IsTranslucent)
{
    const Picture picture(bar, Background);
    EXPECT_TRUE(isColor(picture.at(3, 150), Background, 0));
    EXPECT_LT(Picture::distance(picture.at(3, 20), Background), 100);
}

TEST_F(OverlayScrollBarTest, KeepsAMinimumThumbSize)
{
    bar.setRange(0, 20'000'000);
    EXPECT_GE(thumb().height(), 8);
}

} // namespace
