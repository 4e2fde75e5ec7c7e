#pragma once

#include "support/SrgbColor.h"

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QWidget>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>

/// What a widget paints, to be measured. All places are in points.
class Picture
{
public:
    /// The widget and its children on a ground of one colour.
    explicit Picture(QWidget &widget, const QColor &ground = Qt::black)
        : Picture(widget.size(), widget.devicePixelRatio(), ground)
    {
        widget.render(&m_image, {}, {}, QWidget::DrawChildren);
    }

    /// What `paint` draws, to compare with.
    Picture(const QSize &size, qreal scale, const QColor &ground,
            const std::function<void(QPainter &)> &paint)
        : Picture(size, scale, ground)
    {
        QPainter painter(&m_image);
        painter.setRenderHint(QPainter::Antialiasing);
        paint(painter);
    }

    qreal scale() const { return m_image.devicePixelRatio(); }

    QColor at(qreal x, qreal y) const
    {
        return m_image.pixelColor(static_cast<int>(x * scale()), static_cast<int>(y * scale()));
    }

    /// The smallest rectangle in `area` that holds every pixel that is not of this colour.
    QRectF inkIn(const QRectF &area, const QColor &ground) const
    {
        return boundsIn(area, [this, &ground](int x, int y) {
            return distance(m_image.pixelColor(x, y), ground) > 24;
        });
    }

    /// The pixel in `area` that is furthest from this colour.
    QColor strongestInkIn(const QRectF &area, const QColor &ground) const
    {
        QColor strongest = ground;
        visit(area, [this, &ground, &strongest](int x, int y) {
            const QColor color = m_image.pixelColor(x, y);
            if (distance(color, ground) > distance(strongest, ground))
                strongest = color;
        });
        return strongest;
    }

    /// The smallest rectangle that holds all in which the two differ; empty if nothing does.
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

    /// The greatest difference of a component.
    static int distance(const QColor &a, const QColor &b)
    {
        return std::max({ std::abs(a.red() - b.red()), std::abs(a.green() - b.green()),
                          std::abs(a.blue() - b.blue()), std::abs(a.alpha() - b.alpha()) });
    }

private:
    Picture(const QSize &size, qreal scale, const QColor &ground)
        : m_image(size * scale, QImage::Format_ARGB32_Premultiplied)
    {
        m_image.setDevicePixelRatio(scale);
        m_image.fill(ground);
    }

    template <typename Visit>
    void visit(const QRectF &area, Visit &&look) const
    {
        const QRect pixels = QRectF(area.topLeft() * scale(), area.size() * scale())
                                 .toAlignedRect()
                                 .intersected(m_image.rect());
        for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
            for (int x = pixels.left(); x <= pixels.right(); ++x)
                look(x, y);
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

/// `top` painted on an opaque ground.
inline QColor over(const SrgbColor &top, const QColor &ground)
{
    const auto mix = [&top](double above, int below) {
        return static_cast<int>(std::lround(255 * above * top.opacity + below * (1 - top.opacity)));
    };
    return { mix(top.red, ground.red()), mix(top.green, ground.green()),
             mix(top.blue, ground.blue()) };
}

/// Rounding, once for each layer, may change a component by one.
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
