#include "app/GlassBackground.h"

#include "app/VisualEffectBackground.h"
#include "views/Picture.h"

#include <QPainter>
#include <gtest/gtest.h>

namespace
{

constexpr SrgbColor Window { 0.045, 0.045, 0.075, 0.62 };
constexpr SrgbColor Tint { 0.035, 0.038, 0.075, 0.7 };
constexpr SrgbColor TopLeft { 0.18, 0.18, 0.3, 0.22 };
constexpr SrgbColor BottomRight { 0.35, 0.08, 0.08, 0.12 };
constexpr QRect Frame(0, 0, 430, 650);

struct Layers {
    double red;
    double green;
    double blue;

    /// With one layer more on top, unrounded.
    Layers under(const SrgbColor &top) const
    {
        const auto mix = [&top](double above, double below) {
            return above * top.opacity + below * (1 - top.opacity);
        };
        return { mix(top.red, red), mix(top.green, green), mix(top.blue, blue) };
    }

    QColor color() const
    {
        return QColor::fromRgbF(static_cast<float>(red), static_cast<float>(green),
                                static_cast<float>(blue));
    }
};

Layers layersOn(const QColor &ground)
{
    const Layers base { ground.redF(), ground.greenF(), ground.blueF() };
    return base.under(Window).under(VisualEffectBackground::material).under(Tint);
}

Picture paintedOn(const QColor &ground, bool isOpaque, int radius = 0)
{
    return { Frame.size(), 1, ground, [isOpaque, radius](QPainter &painter) {
                GlassBackground::paint(painter, Frame, radius, isOpaque);
            } };
}

TEST(GlassBackgroundTest, LaysTintAndGradientOverTheMaterial)
{
    for (const QColor ground : { QColor(Qt::white), QColor(Qt::black), QColor(200, 40, 90) }) {
        const Picture picture = paintedOn(ground, false);
        const Layers layers = layersOn(ground);
        EXPECT_TRUE(isColor(picture.at(0, 0), layers.under(TopLeft).color(), 1));
        EXPECT_TRUE(isColor(picture.at(215, 325), layers.color(), 1));
        EXPECT_TRUE(isColor(picture.at(429, 649), layers.under(BottomRight).color(), 1));
    }
}

TEST(GlassBackgroundTest, RunsItsGradientFromCornerToCorner)
{
    const Picture picture = paintedOn(Qt::black, false);
    const Layers layers = layersOn(Qt::black);
    EXPECT_TRUE(isColor(picture.at(107, 162), layers.under(TopLeft.withOpacity(0.11)).color(), 1));
    EXPECT_TRUE(
        isColor(picture.at(322, 487), layers.under(BottomRight.withOpacity(0.06)).color(), 1));
}

TEST(GlassBackgroundTest, LetsHardlyAnythingThroughFromBehind)
{
    const QColor onWhite = paintedOn(Qt::white, false).at(215, 325);
    const QColor onBlack = paintedOn(Qt::black, false).at(215, 325);
    EXPECT_LE(Picture::distance(onWhite, onBlack), 3);
}

TEST(GlassBackgroundTest, LetsNothingThroughWhereItIsOpaque)
{
    const Picture onWhite = paintedOn(Qt::white, true);
    EXPECT_EQ(onWhite.differenceFrom(paintedOn(Qt::black, true), 0), QRectF());
    EXPECT_EQ(onWhite.differenceFrom(paintedOn(Qt::black, false), 1), QRectF());
}

TEST(GlassBackgroundTest, LeavesRoundCornersOut)
{
    const Picture picture = paintedOn(Qt::green, false, 10);
    EXPECT_TRUE(isColor(picture.at(0, 0), Qt::green));
    EXPECT_TRUE(isColor(picture.at(429, 649), Qt::green));
    EXPECT_FALSE(isColor(picture.at(5, 5), Qt::green, 100));
}

} // namespace
