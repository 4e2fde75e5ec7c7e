#include "views/Symbol.h"

#include "views/Picture.h"

#include <QIcon>
#include <gtest/gtest.h>

namespace
{

using namespace Qt::StringLiterals;

constexpr QRectF Frame(8, 8, 24, 24);

Picture pictureOf(const QString &name, const std::optional<SrgbColor> &tint, qreal scale,
                  const QRectF &frame = Frame)
{
    return { QSize(40, 40), scale, Background,
             [&](QPainter &painter) { Symbol::paint(painter, name, frame, tint); } };
}

TEST(SymbolTest, DrawsEveryNamedSymbolWithinItsFrame)
{
    const QString names = u"app arrow.up.right.square checkmark circle.fill doc.on.clipboard "
                          "doc.on.doc gearshape globe line.3.horizontal mic paintpalette pin.fill "
                          "plus plus.square.dashed square.grid.2x2 square.stack.3d.up trash "
                          "waveform xmark xmark.circle.fill"_s;
    for (const QString &name : names.split(u' ')) {
        for (const qreal scale : { 1.0, 1.25, 2.0 }) {
            const Picture picture = pictureOf(name, SrgbColor::white(), scale);
            const QRectF ink = picture.inkIn({ 0, 0, 40, 40 }, Background);
            EXPECT_GE(std::max(ink.width(), ink.height()), 12) << name.toStdString();
            EXPECT_TRUE(Frame.adjusted(-1, -1, 1, 1).contains(ink)) << name.toStdString();
        }
    }
}

TEST(SymbolTest, AppliesTheTint)
{
    for (const SrgbColor &tint :
         { SrgbColor::white(), SrgbColor { 0.91, 0.16, 0.17 }, SrgbColor::white(0.5) })
        EXPECT_TRUE(
            isColor(pictureOf(u"circle.fill"_s, tint, 1).at(20, 20), over(tint, Background)));
}

TEST(SymbolTest, KeepsTheAspectRatio)
{
    const QRectF wide = pictureOf(u"circle.fill"_s, SrgbColor::white(), 1, { 0, 10, 40, 16 })
                            .inkIn({ 0, 0, 40, 40 }, Background);
    EXPECT_NEAR(wide.width(), wide.height(), 1);
    EXPECT_NEAR(wide.center().x(), 20, 1);
    EXPECT_NEAR(wide.center().y(), 18, 1);
}

TEST(SymbolTest, HasMoreDetailAtScale2)
{
    // An upscaled drawing would repeat each pixel.
    const Picture picture = pictureOf(u"checkmark"_s, SrgbColor::white(), 2);
    bool hasFineDetail = false;
    for (qreal y = 8; y < 32; y += 1) {
        for (qreal x = 8; x < 32; x += 1)
            hasFineDetail = hasFineDetail || picture.at(x, y) != picture.at(x + 0.5, y);
    }
    EXPECT_TRUE(hasFineDetail);
}

TEST(SymbolTest, DrawsNothingForAnUnknownName)
{
    EXPECT_EQ(
        pictureOf(u"no.such.symbol"_s, SrgbColor::white(), 1).inkIn({ 0, 0, 40, 40 }, Background),
        QRectF());
    EXPECT_TRUE(Symbol::menuIcon(u"no.such.symbol"_s, SrgbColor::white(), 12).isNull());
    EXPECT_TRUE(Symbol::applicationIcon(u"no.such.symbol"_s).isNull());
}

TEST(SymbolTest, IsWhiteInASelectedMenuItem)
{
    const QIcon icon = Symbol::menuIcon(u"circle.fill"_s, SrgbColor { 1, 0, 0 }, 12);
    const auto centerOf = [&icon](QIcon::Mode mode) {
        return icon.pixmap(QSize(12, 12), mode).toImage().pixelColor(6, 6);
    };
    EXPECT_EQ(centerOf(QIcon::Normal), QColor(Qt::red));
    EXPECT_EQ(centerOf(QIcon::Active), QColor(Qt::white));
}

TEST(SymbolTest, DrawsUntintedArtwork)
{
    for (const auto &name : { u"CupIcon"_s, u"DockIcon"_s, u"Logo"_s }) {
        const Picture picture = pictureOf(name, std::nullopt, 2, { 0, 0, 40, 40 });
        EXPECT_FALSE(picture.inkIn({ 0, 0, 40, 40 }, Background).isEmpty()) << name.toStdString();
    }
}

TEST(SymbolTest, ProvidesTheApplicationIconInSeveralSizes)
{
    const QIcon icon = Symbol::applicationIcon(u"DockIcon"_s);
    EXPECT_GE(icon.availableSizes().size(), 4);
    for (const int side : { 16, 32, 48, 128 })
        EXPECT_TRUE(icon.availableSizes().contains(QSize(side, side))) << side;
}

} // namespace
