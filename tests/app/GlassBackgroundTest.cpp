#include "app/GlassBackground.h"

#include "views/Picture.h"
#include "views/SatchelTheme.h"

#include <QPainter>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace
{

using GlassBackground::Backdrop;

constexpr SrgbColor Window { 0.045, 0.045, 0.075, 0.62 };
constexpr SrgbColor Tint { 0.035, 0.038, 0.075, 0.7 };
constexpr SrgbColor TopLeft { 0.18, 0.18, 0.3, 0.22 };
constexpr SrgbColor BottomRight { 0.35, 0.08, 0.08, 0.12 };
constexpr QRect Frame(0, 0, 430, 650);

struct Layers {
    double red;
    double green;
    double blue;

    /// With `top` painted over them, not rounded to 8 bits.
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

Layers layersOn(const QColor &background,
                const SrgbColor &material = VisualEffectBackground::material)
{
    const Layers base { background.redF(), background.greenF(), background.blueF() };
    return base.under(Window).under(material).under(Tint);
}

Picture paintedOn(const QColor &background, Backdrop backdrop, int radius = 0)
{
    return { Frame.size(), 1, background, [backdrop, radius](QPainter &painter) {
                GlassBackground::paint(painter, Frame, radius, backdrop);
            } };
}

double luminance(const QColor &color)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

/// Contrast ratio as WCAG defines it.
double contrast(const QColor &a, const QColor &b)
{
    const auto [darker, lighter] = std::minmax({ luminance(a), luminance(b) });
    return (lighter + 0.05) / (darker + 0.05);
}

TEST(GlassBackgroundTest, LaysTintAndGradientOverTheMaterial)
{
    for (const QColor background : { QColor(Qt::white), QColor(Qt::black), QColor(200, 40, 90) }) {
        const Picture picture = paintedOn(background, Backdrop::sharp);
        const Layers layers = layersOn(background);
        EXPECT_TRUE(isColor(picture.at(0, 0), layers.under(TopLeft).color(), 1));
        EXPECT_TRUE(isColor(picture.at(215, 325), layers.color(), 1));
        EXPECT_TRUE(isColor(picture.at(429, 649), layers.under(BottomRight).color(), 1));
    }
}

TEST(GlassBackgroundTest, RunsItsGradientFromCornerToCorner)
{
    const Picture picture = paintedOn(Qt::black, Backdrop::sharp);
    const Layers layers = layersOn(Qt::black);
    EXPECT_TRUE(isColor(picture.at(107, 162), layers.under(TopLeft.withOpacity(0.11)).color(), 1));
    EXPECT_TRUE(
        isColor(picture.at(322, 487), layers.under(BottomRight.withOpacity(0.06)).color(), 1));
}

TEST(GlassBackgroundTest, IsNearlyOpaqueOverASharpBackdrop)
{
    const QColor onWhite = paintedOn(Qt::white, Backdrop::sharp).at(215, 325);
    const QColor onBlack = paintedOn(Qt::black, Backdrop::sharp).at(215, 325);
    EXPECT_LE(Picture::distance(onWhite, onBlack), 3);
}

TEST(GlassBackgroundTest, IsMoreTranslucentOverABlurredBackdrop)
{
    const auto &material = VisualEffectBackground::blurringMaterial;
    for (const QColor background : { QColor(Qt::white), QColor(Qt::black), QColor(200, 40, 90) }) {
        EXPECT_TRUE(isColor(paintedOn(background, Backdrop::blurred).at(215, 325),
                            layersOn(background, material).color(), 1));
    }
    const QColor onWhite = paintedOn(Qt::white, Backdrop::blurred).at(215, 325);
    const QColor onBlack = paintedOn(Qt::black, Backdrop::blurred).at(215, 325);
    EXPECT_GE(Picture::distance(onWhite, onBlack), 12);
}

TEST(GlassBackgroundTest, KeepsTextReadableOnWhite)
{
    for (const auto backdrop : { Backdrop::none, Backdrop::sharp, Backdrop::blurred }) {
        const Picture picture = paintedOn(Qt::white, backdrop);
        for (const QPoint place : { QPoint(0, 0), QPoint(215, 325), QPoint(429, 649) }) {
            const QColor background = picture.at(place.x(), place.y());
            EXPECT_GE(contrast(over(SatchelTheme::secondary, background), background), 4.5);
        }
    }
}

TEST(GlassBackgroundTest, IsOpaqueWithoutABackdrop)
{
    const Picture onWhite = paintedOn(Qt::white, Backdrop::none);
    EXPECT_EQ(onWhite.differenceFrom(paintedOn(Qt::black, Backdrop::none), 0), QRectF());
    EXPECT_EQ(onWhite.differenceFrom(paintedOn(Qt::black, Backdrop::sharp), 1), QRectF());
}

TEST(GlassBackgroundTest, LeavesCornersOutsideTheRadiusUnpainted)
{
    const Picture picture = paintedOn(Qt::green, Backdrop::sharp, 10);
    EXPECT_TRUE(isColor(picture.at(0, 0), Qt::green));
    EXPECT_TRUE(isColor(picture.at(429, 649), Qt::green));
    EXPECT_FALSE(isColor(picture.at(5, 5), Qt::green, 100));
}

} // namespace
