#include "views/PushButton.h"

#include "views/Input.h"
#include "views/Picture.h"

#include <gtest/gtest.h>

namespace
{

class PushButtonTest : public testing::Test
{
protected:
    PushButtonTest()
    {
        window.resize(200, 60);
        button.setGeometry({ QPoint(20, 20), button.sizeHint() });
        Input::show(window);
        Input::moveTo(window, { 1, 1 });
    }

    /// The colour beside the title.
    QColor bezel() { return Picture(button).at(4, button.height() / 2.0); }

    QColor ink()
    {
        const QRectF middle = QRectF(button.rect()).adjusted(7, 4, -7, -4);
        return Picture(button).strongestInkIn(middle, bezel());
    }

    QWidget window;
    PushButton button { QStringLiteral("Title"), &window };
};

TEST_F(PushButtonTest, FitsItsTitle)
{
    const Picture picture(button);
    const QRectF ink = picture.inkIn(QRectF(button.rect()).adjusted(2, 2, -2, -2), bezel());
    EXPECT_EQ(button.height(), PushButton::Height);
    EXPECT_GE(ink.left(), 7);
    EXPECT_LE(ink.right(), button.width() - 7);
    EXPECT_NEAR(ink.center().x(), button.width() / 2.0, 1.5);
}

TEST_F(PushButtonTest, IsDimmedWhileDisabled)
{
    const QColor enabled = ink();
    button.setEnabled(false);
    EXPECT_TRUE(isColor(bezel(), over(SrgbColor::white(0.12 * 0.4), Qt::black)));
    EXPECT_LT(ink().lightness(), enabled.lightness() / 2);
}

TEST_F(PushButtonTest, HighlightsOnHoverWhileEnabled)
{
    EXPECT_TRUE(isColor(bezel(), over(SrgbColor::white(0.12), Qt::black)));
    Input::moveTo(button, { 10, 10 });
    EXPECT_TRUE(isColor(bezel(), over(SrgbColor::white(0.17), Qt::black)));
    button.setEnabled(false);
    EXPECT_TRUE(isColor(bezel(), over(SrgbColor::white(0.12 * 0.4), Qt::black)));
}

TEST_F(PushButtonTest, UsesTheAccentColorAsDefaultButton)
{
    button.setDefault(true);
    EXPECT_TRUE(isColor(bezel(), over(Accent.withOpacity(0.85), Qt::black)));
    button.setDefault(false);
    EXPECT_TRUE(isColor(bezel(), over(SrgbColor::white(0.12), Qt::black)));
}

} // namespace
