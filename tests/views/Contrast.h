#pragma once

#include <QColor>
#include <QImage>
#include <QRect>
#include <QRgb>
#include <QWidget>

#include <algorithm>
#include <cmath>
#include <map>

/// How well what is drawn stands out from what it is drawn on, as the Web Content Accessibility
/// Guidelines reckon: from 1, which is not at all, to 21.
namespace Contrast
{

inline double luminance(QRgb color)
{
    const auto linear = [](int component) {
        const double value = component / 255.0;
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(qRed(color)) + 0.7152 * linear(qGreen(color)) +
           0.0722 * linear(qBlue(color));
}

inline double between(QRgb a, QRgb b)
{
    const auto [darker, lighter] = std::minmax({ luminance(a), luminance(b) });
    return (lighter + 0.05) / (darker + 0.05);
}

/// A part of a widget on what shines through it, large enough that the strokes of the smallest
/// text have pixels of its full colour.
inline QImage enlarged(QWidget &widget, const QRect &area, const QColor &behind)
{
    constexpr int Scale = 4;
    QImage image(area.size() * Scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(Scale);
    image.fill(behind);
    widget.render(&image, {}, area);
    return image;
}

/// Of what is drawn in the picture from its ground, which is what most of it has. What is smaller
/// than a stroke is not counted.
inline double within(const QImage &picture)
{
    constexpr int Stroke = 12; // pixels
    std::map<QRgb, int> counts;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            ++counts[picture.pixel(x, y)];
    }
    const auto ground =
        std::ranges::max_element(counts, {}, [](const auto &color) { return color.second; });
    double greatest = 1;
    for (const auto &[color, count] : counts) {
        if (count >= Stroke)
            greatest = std::max(greatest, between(color, ground->first));
    }
    return greatest;
}

} // namespace Contrast
