#include "views/Shadow.h"

#include "views/Painting.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <numeric>
#include <vector>

namespace
{

constexpr int Step = 4; // points between samples; a wide blur needs no finer ones

/// A grid of opacities from 0 to 255.
struct Plane {
    int width;
    int height;
    std::vector<float> samples;

    /// The first sample of a row.
    float *row(int y) { return samples.data() + static_cast<std::ptrdiff_t>(y) * width; }

    const float *row(int y) const
    {
        return samples.data() + static_cast<std::ptrdiff_t>(y) * width;
    }
};

Plane rectangle(const Shadow &shadow, const QSize &size, int cornerRadius)
{
    const int margin = shadow.margin();
    const QSize area = (size + QSize(2 * margin + Step - 1, 2 * margin + Step - 1)) / Step;
    QImage image(area, QImage::Format_Grayscale8);
    image.fill(Qt::black);
    QPainter painter(&image);
    painter.scale(1.0 / Step, 1.0 / Step);
    Painting::fillRoundedRect(painter, { QPointF(margin, margin + shadow.offset), size },
                              cornerRadius, SrgbColor::white(shadow.opacity));
    painter.end();
    Plane plane { image.width(), image.height(), {} };
    for (int y = 0; y < plane.height; ++y)
        plane.samples.insert(plane.samples.end(), image.constScanLine(y),
                             image.constScanLine(y) + plane.width);
    return plane;
}

/// Half of a Gaussian kernel, starting with the central weight.
std::vector<float> gaussianKernel(float deviation)
{
    std::vector<float> weights(static_cast<std::size_t>(std::ceil(3 * deviation)) + 1);
    for (std::size_t distance = 0; distance < weights.size(); ++distance)
        weights[distance] = std::exp(-std::pow(static_cast<float>(distance) / deviation, 2.F) / 2);
    const float sum = 2 * std::accumulate(weights.begin(), weights.end(), 0.F) - weights.front();
    for (float &weight : weights)
        weight /= sum;
    return weights;
}

/// Blurs along the rows and transposes the plane, so that two calls blur in both directions.
Plane blurredAndTransposed(const Plane &plane, const std::vector<float> &weights)
{
    Plane transposed { plane.height, plane.width, std::vector<float>(plane.samples.size()) };
    const int reach = static_cast<int>(weights.size()) - 1;
    for (int y = 0; y < plane.height; ++y) {
        const float *const row = plane.row(y);
        for (int x = 0; x < plane.width; ++x) {
            float sum = 0;
            const int last = std::min(x + reach, plane.width - 1);
            for (int place = std::max(x - reach, 0); place <= last; ++place)
                sum += row[place] * weights[static_cast<std::size_t>(std::abs(place - x))];
            transposed.row(x)[y] = sum;
        }
    }
    return transposed;
}

QImage blackImage(const Plane &plane)
{
    QImage image(plane.width, plane.height, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < plane.height; ++y) {
        for (int x = 0; x < plane.width; ++x)
            image.setPixel(x, y, qRgba(0, 0, 0, static_cast<int>(std::lround(plane.row(y)[x]))));
    }
    return image;
}

} // namespace

QPixmap Shadow::render(const QSize &size, int cornerRadius, qreal scale) const
{
    const auto weights = gaussianKernel(static_cast<float>(blurRadius) / 2 / Step);
    const Plane plane = rectangle(*this, size, cornerRadius);
    const QImage blurred =
        blackImage(blurredAndTransposed(blurredAndTransposed(plane, weights), weights));

    QPixmap pixmap((QSizeF(size + QSize(2 * margin(), 2 * margin())) * scale).toSize());
    pixmap.setDevicePixelRatio(scale);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(QRectF(QPointF(), QSizeF(blurred.size()) * Step), blurred);
    // Erases what lies below the rectangle, which may be translucent.
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    Painting::fillRoundedRect(painter, QRectF(QPointF(margin(), margin()), size), cornerRadius,
                              SrgbColor::black());
    return pixmap;
}
