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

/// Contrast ratios as defined by the Web Content Accessibility Guidelines, from 1 to 21.
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

inline double ratio(QRgb a, QRgb b)
{
    const auto [darker, lighter] = std::minmax({ luminance(a), luminance(b) });
    return (lighter + 0.05) / (darker + 0.05);
}

/// Renders a part of a widget on `background`, enlarged so that even the strokes of small text
/// contain pixels of the full colour.
inline QImage renderEnlarged(QWidget &widget, const QRect &area, const QColor &background)
{
    constexpr int Scale = 4;
    QImage image(area.size() * Scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(Scale);
    image.fill(background);
    widget.render(&image, {}, area);
    return image;
}

constexpr int MinimumPixels = 12; // fewer pixels of a colour do not count

/// The number of pixels of each colour.
inline std::map<QRgb, int> colorCounts(const QImage &picture)
{
    std::map<QRgb, int> counts;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            ++counts[picture.pixel(x, y)];
    }
    return counts;
}

/// The most frequent colour.
inline QRgb backgroundOf(const std::map<QRgb, int> &colors)
{
    return std::ranges::max_element(colors, {}, [](const auto &color) { return color.second; })
        ->first;
}

/// The greatest contrast of a colour in the picture to its background.
inline double of(const QImage &picture)
{
    const auto colors = colorCounts(picture);
    const QRgb background = backgroundOf(colors);
    double greatest = 1;
    for (const auto &[color, count] : colors) {
        if (count >= MinimumPixels)
            greatest = std::max(greatest, ratio(color, background));
    }
    return greatest;
}

/// The same for a pixmap that was scaled up: its lines have pixels of many shades, so the pixels of
/// the strongest shades are counted together.
inline double ofScaled(const QImage &picture)
{
    const auto colors = colorCounts(picture);
    const QRgb background = backgroundOf(colors);
    std::multimap<double, int, std::greater<>> counts;
    for (const auto &[color, count] : colors)
        counts.emplace(ratio(color, background), count);
    int pixels = 0;
    const auto last = std::ranges::find_if(counts, [&pixels](const auto &contrast) {
        return (pixels += contrast.second) >= MinimumPixels;
    });
    return last == counts.end() ? 1 : last->first;
}

} // namespace Contrast
