#pragma once

#include <QByteArray>
#include <QImage>

/// Decodes untrusted PNGs through libpng itself: Qt's reader lets libpng write its errors to
/// stderr.
namespace PngImage
{

bool isPng(const QByteArray &bytes);

/// The image in sRGB, 32 bits a pixel. Null if the bytes are no complete PNG, or if it has more
/// than `maximumPixels`.
QImage read(const QByteArray &bytes, qint64 maximumPixels);

} // namespace PngImage
