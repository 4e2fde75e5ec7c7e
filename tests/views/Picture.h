#pragma once

#include "support/SrgbColor.h"
#include "views/Painting.h"

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QWidget>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <functional>

/// A background that differs from every colour of the theme.
inline const QColor Background(20, 60, 90);

/// The red of the theme.
inline constexpr SrgbColor Accent { 0.91, 0.16, 0.17 };

/// A rendered widget, to be measured. Coordinates are points.
class Picture
{
public:
    /// The widget and its children on a background.
    explicit Picture(QWidget &widget, const QColor &background = Qt::black)
        : Picture(widget.size(), widget.devicePixelRatio(), background)
    {
        widget.render(&m_image, {}, {}, QWidget::DrawChildren);
    }

    /// The drawing of `paint`, for comparison.
    Picture(const QSize &size, qreal scale, const QColor &background,
            const std::function<void(QPainter &)> &paint)
        : Picture(size, scale, background)
    {
        QPainter painter(&m_image);
        painter.setRenderHint(QPainter::Antialiasing);
        paint(painter);
    }

    /// The same, of the widget's size and scale.
    Picture(const QWidget &widget, const QColor &background,
            const std::function<void(QPainter &)> &paint)
        : Picture(widget.size(), widget.devicePixelRatio(), background, paint)
    {
    }

    qreal scale() const { return m_image.devicePixelRatio(); }

    QColor at(qreal x, qreal y) const
    {
        return m_image.pixelColor(static_cast<int>(x * scale()), static_cast<int>(y * scale()));
    }

    /// The bounds in `area` of all pixels that differ from the background.
    QRectF inkIn(const QRectF &area, const QColor &background) const
    {
        return boundsIn(area, [this, &background](int x, int y) {
            return distance(m_image.pixelColor(x, y), background) > 24;
        });
    }

    /// The pixel in `area` that differs most from the background.
    QColor strongestInkIn(const QRectF &area, const QColor &background) const
    {
        QColor strongest = background;
        visit(area, [this, &background, &strongest](int x, int y) {
            const QColor color = m_image.pixelColor(x, y);
            if (distance(color, background) > distance(strongest, background))
                strongest = color;
        });
        return strongest;
    }

    /// The bounds of all differing pixels; empty if there is no difference.
    QRectF differenceFrom(const Picture &other, const QRectF &area, int tolerance = 3) const
    {
        return boundsIn(area, [this, &other, tolerance](int x, int y) {
            return distance(m_image.pixelColor(x, y), other.m_image.pixelColor(x, y)) > tolerance;
        });
    }

    QRectF differenceFrom(const Picture &other, int tolerance = 3) const
    {
        return differenceFrom(other, rect(), tolerance);
    }

    QRectF rect() const { return { QPointF(), m_image.deviceIndependentSize() }; }

    /// The greatest difference of a colour component, from 0 to 255.
    static int distance(const QColor &a, const QColor &b)
    {
        return std::max({ std::abs(a.red() - b.red()), std::abs(a.green() - b.green()),
                          std::abs(a.blue() - b.blue()), std::abs(a.alpha() - b.alpha()) });
    }

private:
    Picture(const QSize &size, qreal scale, const QColor &background)
        : m_image(size * scale, QImage::Format_ARGB32_Premultiplied)
    {
        m_image.setDevicePixelRatio(scale);
        m_image.fill(background);
    }

    template <typename Visit>
    void visit(const QRectF &area, Visit &&visitPixel) const
    {
        const QRect pixels = QRectF(area.topLeft() * scale(), area.size() * scale())
                                 .toAlignedRect()
                                 .intersected(m_image.rect());
        for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
            for (int x = pixels.left(); x <= pixels.right(); ++x)
                visitPixel(x, y);
        }
    }

    template <typename Test>
    QRectF boundsIn(const QRectF &area, Test &&test) const
    {
        QRect bounds;
        visit(area, [&bounds, &test](int x, int y) {
            if (test(x, y))
                bounds |= QRect(x, y, 1, 1);
        });
        return { QPointF(bounds.topLeft()) / scale(), QSizeF(bounds.size()) / scale() };
    }

    QImage m_image;
};

/// Fills a rounded rectangle and strokes it one point wide inside its edges, as reference for
/// views.
inline void drawBox(QPainter &painter, const QRectF &box, qreal radius, const SrgbColor &fill,
                    const SrgbColor &stroke)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(Painting::qColor(fill));
    painter.drawRoundedRect(box, radius, radius);
    painter.setPen(QPen(Painting::qColor(stroke), 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(box.adjusted(0.5, 0.5, -0.5, -0.5), radius - 0.5, radius - 0.5);
}

/// The squares of `side` points in the corners of `rect`.
inline std::array<QRectF, 4> cornersOf(const QRectF &rect, qreal side)
{
    const QSizeF size(side, side);
    const qreal right = rect.right() - side;
    const qreal bottom = rect.bottom() - side;
    return { { { rect.topLeft(), size },
               { { right, rect.top() }, size },
               { { rect.left(), bottom }, size },
               { { right, bottom }, size } } };
}

/// The colour of `top` painted on an opaque background.
inline QColor over(const SrgbColor &top, const QColor &background)
{
    const auto mix = [&top](double above, int below) {
        return static_cast<int>(std::lround(255 * above * top.opacity + below * (1 - top.opacity)));
    };
    return { mix(top.red, background.red()), mix(top.green, background.green()),
             mix(top.blue, background.blue()) };
}

/// Each layer may round a component by one, hence the tolerance.
inline testing::AssertionResult isColor(const QColor &actual, const QColor &expected,
                                        int tolerance = 2)
{
    if (Picture::distance(actual, expected) <= tolerance)
        return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << actual.name(QColor::HexArgb).toStdString() << " instead of "
           << expected.name(QColor::HexArgb).toStdString();
}

inline testing::AssertionResult isReddish(const QColor &color)
{
    if (color.red() > color.green() + 60 && color.red() > color.blue() + 60)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << color.name().toStdString();
}

inline testing::AssertionResult isGrey(const QColor &color)
{
    const auto [least, most] = std::minmax({ color.red(), color.green(), color.blue() });
    if (most - least <= 12)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << color.name().toStdString();
}

inline void PrintTo(const QRectF &rect, std::ostream *out)
{
    *out << rect.width() << "x" << rect.height() << "+" << rect.x() << "+" << rect.y();
}

inline void PrintTo(const QRect &rect, std::ostream *out)
{
    PrintTo(QRectF(rect), out);
}

inline void PrintTo(const QSize &size, std::ostream *out)
{
    *out << size.width() << "x" << size.height();
}
