#include "views/ActionButton.h"

#include "views/Input.h"
#include "views/Picture.h"
#include "views/SatchelTheme.h"

#include <QFontMetrics>
#include <gtest/gtest.h>

namespace
{

using namespace Qt::StringLiterals;

class ActionButtonTest : public testing::Test
{
protected:
    void render(bool active) { button.render(u"Copy"_s, u"doc.on.doc"_s, active); }

    static SrgbColor fillColor(bool active)
    {
        return active ? SrgbColor { 0.91, 0.16, 0.17, 0.18 } : SrgbColor::white(0.045);
    }

    static SrgbColor strokeColor(bool active)
    {
        return active ? SrgbColor { 0.91, 0.16, 0.17, 0.5 } : SrgbColor::white(0.1);
    }

    QColor fill(bool active) const { return over(fillColor(active), Background); }

    /// The expected shape without symbol and title.
    Picture shape(bool active) const
    {
        return { button, Background, [&](QPainter &painter) {
                    drawBox(painter, button.rect(), 5, fillColor(active), strokeColor(active));
                } };
    }

    int presses = 0;
    ActionButton button { [this] { ++presses; }, nullptr };
};

TEST_F(ActionButtonTest, HasTheSameSizeActiveAndInactive)
{
    render(false);
    const QSize size = button.size();
    const QSize hint = button.sizeHint();
    render(true);
    EXPECT_EQ(button.size(), size);
    EXPECT_EQ(button.sizeHint(), hint);
}

TEST_F(ActionButtonTest, HasAFaintOrAnAccentFillAndStroke)
{
    for (const bool active : { false, true }) {
        render(active);
        const Picture picture(button, Background);
        EXPECT_TRUE(isColor(picture.at(4, button.height() / 2.0), fill(active)));
        EXPECT_TRUE(isColor(picture.at(button.width() / 2.0, 0.4),
                            over(strokeColor(active), fill(active))));
    }
}

TEST_F(ActionButtonTest, HasCornerRadius5)
{
    for (const bool active : { false, true }) {
        render(active);
        const Picture picture(button, Background);
        for (const QRectF &corner : cornersOf(button.rect(), 7))
            EXPECT_EQ(picture.differenceFrom(shape(active), corner), QRectF());
        EXPECT_TRUE(isColor(picture.at(0.2, 0.2), Background));
    }
}

TEST_F(ActionButtonTest, TintsSymbolAndTitle)
{
    const QRectF symbol(8, 2, 12, 16);
    for (const bool active : { false, true }) {
        render(active);
        const Picture picture(button, Background);
        const QRectF title(24, 2, button.width() - 32, button.height() - 4);
        for (const auto &part : { symbol, title }) {
            const QColor ink = picture.strongestInkIn(part, fill(active));
            if (active)
                EXPECT_TRUE(isReddish(ink));
            else
                EXPECT_TRUE(isColor(ink, over(SrgbColor::white(0.56), fill(false)), 45));
        }
    }
}

TEST_F(ActionButtonTest, PadsItsLabelBy8And5Points)
{
    render(false);
    const QRectF inside(2, 2, button.width() - 4, button.height() - 4);
    const QRectF ink = Picture(button, Background).inkIn(inside, fill(false));
    EXPECT_GE(ink.left(), 8);
    EXPECT_LE(ink.left(), 11);
    EXPECT_GE(ink.right(), button.width() - 10);
    EXPECT_LE(ink.right(), button.width() - 7.5); // with the side bearing of the last letter
    EXPECT_GE(ink.top(), 5);
    EXPECT_LE(ink.bottom(), button.height() - 5);

    const QFontMetrics metrics(Painting::systemFont(10, QFont::Medium));
    EXPECT_EQ(button.height(), metrics.height() + 10);
    EXPECT_EQ(ActionButton::buttonHeight(), button.height());
    EXPECT_EQ(button.font().pixelSize(), 10);
    EXPECT_EQ(button.font().weight(), QFont::Medium);
}

TEST_F(ActionButtonTest, FitsTheWidthOfItsTitle)
{
    render(false);
    const int narrow = button.width();
    button.render(u"Copied"_s, u"checkmark"_s, true);
    const QFontMetrics metrics(button.font());
    EXPECT_EQ(button.width() - narrow,
              metrics.horizontalAdvance(u"Copied"_s) - metrics.horizontalAdvance(u"Copy"_s));
}

TEST_F(ActionButtonTest, CallsItsActionOnClick)
{
    render(false);
    Input::show(button);
    Input::click(button);
    EXPECT_EQ(presses, 1);
    render(true);
    Input::click(button);
    EXPECT_EQ(presses, 2);
}

TEST_F(ActionButtonTest, UsesItsTitleAsAccessibleName)
{
    render(false);
    EXPECT_EQ(Input::accessibleName(button), "Copy");
    EXPECT_EQ(Input::role(button), QAccessible::Button);
    button.render(u"Copied"_s, u"checkmark"_s, true);
    EXPECT_EQ(Input::accessibleName(button), "Copied");
}

} // namespace
