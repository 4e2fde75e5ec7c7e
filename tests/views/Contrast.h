#pragma once

#include <QColor>
#include <QImage>
#include <QRect>
#include <QRgb>
#include <QWidget>

#include <algorithm>
#include <cmath>
#include <functional>
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

constexpr int Stroke = 12; // pixels; less is not counted

/// How many pixels have each colour.
inline std::map<QRgb, int> colorsOf(const QImage &picture)
{
    std::map<QRgb, int> counts;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            ++counts[picture.pixel(x, y)];
    }
    return counts;
}

/// The colour of most pixels.
inline QRgb groundOf(const std::map<QRgb, int> &colors)
{
    return std::ranges::max_element(colors, {}, [](const auto &color) { return color.second; })
        ->first;
}

/// Of what is drawn in the picture from its ground. What is smaller than a stroke is not counted.
inline double within(const QImage &picture)
{
    const auto colors = colorsOf(picture);
    const QRgb ground = groundOf(colors);
    double greatest = 1;
    for (const auto &[color, count] : colors) {
        if (count >= Stroke)
            greatest = std::max(greatest, between(color, ground));
    }
    return greatest;
}

/// The same for a pixmap that was scaled up, whose lines have pixels of many shades: the contrast
/// that the strongest of them reach together.
inline double withinScaled(const QImage &picture)
{
    const auto colors = colorsOf(picture);
    const QRgb ground = groundOf(colors);
    std::multimap<double, int, std::greater<>> counts;
    for (const auto &[color, count] : colors)
        counts.emplace(between(color, ground), count);
    int pixels = 0;
    const auto last = std::ranges::find_if(
        counts, [&pixels](const auto &contrast) { return (pixels += contrast.second) >= Stroke; });
    return last == counts.end() ? 1 : last->first;
}

} // namespace Contrast
