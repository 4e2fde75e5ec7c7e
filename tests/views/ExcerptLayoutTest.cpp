#include "views/ExcerptLayout.h"

#include "views/Painting.h"

#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

#include <array>

namespace
{

constexpr int LayoutWidth = 200;
constexpr int PictureHeight = 60;

class ExcerptLayoutTest : public testing::Test
{
protected:
    /// Paints the excerpt in white, and its emphasised parts in red.
    QImage painted(const Excerpt &excerpt, int lines) const
    {
        const ExcerptLayout layout(excerpt, font, SrgbColor { 1, 0, 0 }, LayoutWidth, lines);
        QImage image(2 * LayoutWidth, PictureHeight, QImage::Format_RGB32);
        image.fill(Qt::black);
        QPainter painter(&image);
        painter.setPen(Qt::white);
        layout.draw(painter, QPointF(0, 0));
        return image;
    }

    /// The bounds of the pixels that `isPainted`.
    template <typename IsPainted>
    static QRect bounds(const QImage &image, IsPainted &&isPainted)
    {
        QRect bounds;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (isPainted(image.pixelColor(x, y)))
                    bounds |= QRect(x, y, 1, 1);
            }
        }
        return bounds;
    }

    static QRect textBounds(const QImage &image)
    {
        return bounds(image, [](const QColor &color) { return color.red() > 60; });
    }

    static QRect emphasisBounds(const QImage &image)
    {
        return bounds(image,
                      [](const QColor &color) { return color.red() > 60 && color.green() < 10; });
    }

    qreal height(const Excerpt &excerpt, int lines) const
    {
        return ExcerptLayout(excerpt, font, SrgbColor::white(1), LayoutWidth, lines).height();
    }

    QFont font = Painting::systemFont(11);
    qreal lineHeight = QFontMetricsF(font).height();
};

TEST_F(ExcerptLayoutTest, IsAsHighAsItsLines)
{
    const QString longText = QStringLiteral("some words ").repeated(20);
    EXPECT_EQ(height({ QString() }, 2), 0);
    EXPECT_EQ(height({ QStringLiteral("short") }, 2), lineHeight);
    EXPECT_EQ(height({ longText }, 1), lineHeight);
    EXPECT_EQ(height({ longText }, 2), 2 * lineHeight);
}

TEST_F(ExcerptLayoutTest, StaysWithinItsWidth)
{
    const std::array texts {
        QStringLiteral("some words ").repeated(20), QString(500, u'W'),
        QStringLiteral("שלום עולם ").repeated(30),
        QStringLiteral("\U0001F468\u200D\U0001F469\u200D\U0001F467").repeated(60),
        QStringLiteral("日本語").repeated(60)
    };
    for (const auto &text : texts) {
        for (const int lines : { 1, 2 }) {
            const Excerpt excerpt { text, { { 0, text.size() } } };
            EXPECT_LE(textBounds(painted(excerpt, lines)).right(), LayoutWidth)
                << text.toStdString();
        }
    }
}

TEST_F(ExcerptLayoutTest, DrawsOnlyTheMatchesEmphasised)
{
    const QImage image = painted({ QStringLiteral("iii MMM iii"), { { 4, 3 } } }, 1);
    const QRect match = emphasisBounds(image);
    const QRect text = textBounds(image);
    EXPECT_GT(match.left(), text.left() + 5);
    EXPECT_LT(match.right(), text.right() - 5);
    EXPECT_TRUE(emphasisBounds(painted({ QStringLiteral("iii MMM iii") }, 1)).isEmpty());
}

TEST_F(ExcerptLayoutTest, EmphasisesMatchesOnTheSecondLine)
{
    const QString words = QStringLiteral("some words ").repeated(5);
    const Excerpt excerpt { words + u'M', { { words.size(), 1 } } };
    EXPECT_GE(emphasisBounds(painted(excerpt, 2)).top(), static_cast<int>(lineHeight));
}

} // namespace
