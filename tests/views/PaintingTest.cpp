#include "views/Painting.h"

#include "views/Picture.h"
#include "views/SatchelTheme.h"

#include <QApplication>
#include <gtest/gtest.h>

namespace
{

Picture painted(const std::function<void(QPainter &)> &paint)
{
    return { QSize(60, 40), 1, Background, paint };
}

TEST(PaintingTest, HasTheThemeColors)
{
    EXPECT_EQ(SatchelTheme::raised, (SrgbColor { 0.125, 0.12, 0.14, 1 }));
    EXPECT_EQ(SatchelTheme::border, (SrgbColor { 1, 1, 1, 0.1 }));
    EXPECT_EQ(SatchelTheme::secondary, (SrgbColor { 1, 1, 1, 0.56 }));
    EXPECT_EQ(SatchelTheme::accent, (SrgbColor { 0.91, 0.16, 0.17, 1 }));
}

TEST(PaintingTest, ConvertsColorsExactly)
{
    const QColor color = Painting::qColor({ 0.91, 0.16, 0.17, 0.12 });
    EXPECT_NEAR(color.redF(), 0.91, 0.001);
    EXPECT_NEAR(color.greenF(), 0.16, 0.001);
    EXPECT_NEAR(color.blueF(), 0.17, 0.001);
    EXPECT_NEAR(color.alphaF(), 0.12, 0.001);
}

TEST(PaintingTest, UsesTheDesktopFontInPoints)
{
    const QFont font = Painting::systemFont(13, QFont::DemiBold);
    EXPECT_EQ(font.family(), QApplication::font().family());
    EXPECT_EQ(font.pixelSize(), 13);
    EXPECT_EQ(font.weight(), QFont::DemiBold);
    EXPECT_EQ(Painting::systemFont(11).weight(), QFont::Normal);
}

TEST(PaintingTest, FillsARoundedRectangleUpToItsEdges)
{
    const Picture picture = painted([](QPainter &painter) {
        Painting::fillRoundedRect(painter, { 10, 10, 40, 20 }, 6, SrgbColor::white());
    });
    EXPECT_EQ(picture.inkIn(picture.rect(), Background), QRectF(10, 10, 40, 20));
    EXPECT_TRUE(isColor(picture.at(10, 10), Background));
    EXPECT_TRUE(isColor(picture.at(10, 20), Qt::white));
}

TEST(PaintingTest, StrokesInsideTheRectangle)
{
    for (const int width : { 1, 2 }) {
        const Picture picture = painted([width](QPainter &painter) {
            Painting::strokeRoundedRect(painter, { 10, 10, 40, 20 }, 6, SrgbColor::white(), width);
        });
        EXPECT_EQ(picture.inkIn(picture.rect(), Background), QRectF(10, 10, 40, 20));
        EXPECT_TRUE(isColor(picture.at(10, 20), Qt::white));
        EXPECT_TRUE(isColor(picture.at(10 + width - 1, 20), Qt::white));
        EXPECT_TRUE(isColor(picture.at(10 + width, 20), Background));
    }
}

TEST(PaintingTest, AlignsEdgesToPixelsAtFractionalScales)
{
    Picture(QSize(60, 40), 1.25, Background, [](QPainter &painter) {
        EXPECT_EQ(Painting::onWholePixels(painter, QRectF(0, 1, 58, 40)),
                  QRectF(QPointF(0, 0.8), QPointF(58.4, 40.8)));
        EXPECT_EQ(Painting::wholePixelLine(painter), 0.8);
        EXPECT_EQ(Painting::wholePixelLine(painter, 0.1), 0.8);
    });
}

TEST(PaintingTest, KeepsEdgesOnWholePixels)
{
    for (const int scale : { 1, 2 }) {
        Picture(QSize(60, 40), scale, Background, [](QPainter &painter) {
            EXPECT_EQ(Painting::onWholePixels(painter, QRectF(3, 1, 58, 40)), QRectF(3, 1, 58, 40));
            EXPECT_EQ(Painting::wholePixelLine(painter), 1);
        });
    }
}

TEST(PaintingTest, RoundsTheEndsOfACapsule)
{
    const Picture picture = painted([](QPainter &painter) {
        Painting::fillCapsule(painter, { 10, 10, 40, 20 }, SrgbColor::white());
    });
    EXPECT_TRUE(isColor(picture.at(11, 11), Background));
    EXPECT_TRUE(isColor(picture.at(10, 19), Qt::white, 20));
    EXPECT_TRUE(isColor(picture.at(20, 10), Qt::white, 60));
    EXPECT_TRUE(isColor(picture.at(48, 28), Background));
}

} // namespace
