#include "app/TitlebarControlsView.h"

#include "app/MiniSwitch.h"
#include "views/Input.h"
#include "views/Painting.h"
#include "views/Picture.h"

#include <QFontMetrics>
#include <gtest/gtest.h>

namespace
{

class TitlebarControlsViewTest : public testing::Test
{
protected:
    TitlebarControlsViewTest()
    {
        controls.resize(controls.sizeHint());
        Input::show(controls);
    }

    MiniSwitch &onSwitch() const { return *controls.findChild<MiniSwitch *>(); }

    /// The visible part of the switch, without the margin for its focus ring.
    QRect track() const
    {
        const int margin = Painting::FocusMargin;
        return onSwitch().geometry().marginsRemoved({ margin, margin, margin, margin });
    }

    QRect pin() const { return { 0, 0, track().x() - 4, 28 }; }

    QRect badge() const
    {
        const int left = track().right() + 1 + 6;
        QFont font = QApplication::font();
        font.setPixelSize(8);
        font.setWeight(QFont::Bold);
        const int height = QFontMetrics(font).height() + 6;
        return { left, (28 - height) / 2, controls.width() - left, height };
    }

    Picture picture() { return Picture(controls, Background); }

    WindowPreferences preferences;
    TitlebarControlsView controls { preferences, nullptr };
};

TEST_F(TitlebarControlsViewTest, IsOneRowTwentyEightPointsHigh)
{
    EXPECT_EQ(controls.sizeHint().height(), 28);
    EXPECT_NEAR(QRectF(track()).center().y(), 14, 0.5);
    const QRectF ink = picture().inkIn(pin(), Background);
    EXPECT_NEAR(ink.center().y(), 14, 1);
    EXPECT_GE(ink.height(), 7);
    EXPECT_LE(ink.height(), 12);
    EXPECT_LE(track().x() - ink.right(), 9);
    EXPECT_GE(track().x() - ink.right(), 6);
}

TEST_F(TitlebarControlsViewTest, HasARedPinWhileThePanelIsOnTop)
{
    EXPECT_TRUE(isColor(picture().strongestInkIn(pin(), Background), Painting::qColor(Accent), 12));
}

TEST_F(TitlebarControlsViewTest, HasAGreyPinWhileThePanelIsNotOnTop)
{
    preferences.alwaysOnTop.set(false);
    EXPECT_TRUE(isColor(picture().strongestInkIn(pin(), Background),
                        over(SrgbColor::white(0.56), Background), 12));
    preferences.alwaysOnTop.set(true);
    EXPECT_TRUE(isColor(picture().strongestInkIn(pin(), Background), Painting::qColor(Accent), 12));
}

TEST_F(TitlebarControlsViewTest, ShowsThePreferenceInItsSwitch)
{
    EXPECT_TRUE(onSwitch().isChecked());
    preferences.alwaysOnTop.set(false);
    EXPECT_FALSE(onSwitch().isChecked());
    preferences.alwaysOnTop.set(true);
    EXPECT_TRUE(onSwitch().isChecked());
}

TEST_F(TitlebarControlsViewTest, TogglesThePreferenceByTheSwitch)
{
    Input::click(onSwitch());
    EXPECT_FALSE(preferences.alwaysOnTop.get());
    Input::click(onSwitch());
    EXPECT_TRUE(preferences.alwaysOnTop.get());
    onSwitch().setFocus(Qt::TabFocusReason);
    Input::key(controls, Qt::Key_Space);
    EXPECT_FALSE(preferences.alwaysOnTop.get());
    Input::key(controls, Qt::Key_Return);
    EXPECT_TRUE(preferences.alwaysOnTop.get());
}

TEST_F(TitlebarControlsViewTest, WritesThePreferenceOncePerToggle)
{
    int writes = 0;
    const auto counting = preferences.alwaysOnTop.sink([&writes](bool) { ++writes; });
    writes = 0;
    Input::click(onSwitch());
    EXPECT_EQ(writes, 1);
    preferences.alwaysOnTop.set(true);
    EXPECT_EQ(writes, 2);
}

TEST_F(TitlebarControlsViewTest, DrawsTheSwitchOnAndOff)
{
    const QRect place = track();
    const qreal middle = place.center().y();
    const Picture on = picture();
    EXPECT_TRUE(isColor(on.at(place.left() + 5, middle), Painting::qColor(Accent)));
    EXPECT_GT(on.at(place.right() - 6, middle).lightness(), 220);
    preferences.alwaysOnTop.set(false);
    const Picture off = picture();
    EXPECT_TRUE(isGrey(off.at(place.right() - 5, middle)) ||
                off.at(place.right() - 5, middle).lightness() < 100);
    EXPECT_FALSE(isReddish(off.at(place.right() - 5, middle)));
    EXPECT_GT(off.at(place.left() + 6, middle).lightness(), 220);
}

TEST_F(TitlebarControlsViewTest, DrawsACapsuleBehindTheBadge)
{
    const QRect place = badge();
    const Picture seen = picture();
    const QColor fill = over(SrgbColor::white(0.07), Background);
    EXPECT_TRUE(isColor(seen.at(place.left() + 3.5, 14), fill));
    EXPECT_TRUE(isColor(seen.at(place.right() - 3.5, 14), fill));
    EXPECT_TRUE(isColor(seen.at(place.left() + 0.2, place.top() + 0.2), Background));
    EXPECT_TRUE(isColor(seen.at(place.center().x(), place.top() + 0.4), fill));
    EXPECT_TRUE(isColor(seen.at(place.center().x(), place.top() - 1), Background));
    EXPECT_TRUE(isColor(seen.at(place.center().x(), place.bottom() + 0.5), fill));
    EXPECT_TRUE(isColor(seen.at(place.center().x(), place.bottom() + 2), Background));
}

TEST_F(TitlebarControlsViewTest, DrawsTheBadgeInTheSecondaryColor)
{
    const QRect place = badge();
    QFont font = QApplication::font();
    font.setPixelSize(8);
    font.setWeight(QFont::Bold);
    font.setLetterSpacing(QFont::AbsoluteSpacing, 1);
    EXPECT_EQ(place.width(), QFontMetrics(font).horizontalAdvance(QStringLiteral("LOCAL")) + 12);
    const Picture seen = picture();
    const QColor fill = over(SrgbColor::white(0.07), Background);
    const QRectF ink = seen.inkIn(QRectF(place).adjusted(2, 2, -2, -2), fill);
    EXPECT_NEAR(ink.left() - place.left(), 6, 1.6);
    EXPECT_NEAR(place.right() + 1 - ink.right(), 6, 1.6);
    EXPECT_NEAR(ink.center().y(), 14, 1);
    EXPECT_TRUE(isColor(seen.strongestInkIn(place, fill), over(SrgbColor::white(0.56), fill), 40));
}

TEST_F(TitlebarControlsViewTest, NamesTheSwitch)
{
    EXPECT_EQ(Input::accessibleName(onSwitch()), "Always on Top");
    EXPECT_EQ(onSwitch().toolTip().toStdString(), "Always on Top");
    EXPECT_EQ(onSwitch().text().toStdString(), "");
    EXPECT_EQ(Input::role(onSwitch()), QAccessible::CheckBox);
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(&onSwitch())->state().checked);
}

} // namespace
