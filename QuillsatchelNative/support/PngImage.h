#pragma once

#include <QByteArray>
#include <QImage>

/// Decodes untrusted PNGs with libpng, because libpng writes errors to stderr when Qt's reader uses
/// it.
namespace PngImage
{

bool isPng(const QByteArray &bytes);

/// The image in sRGB, 32 bits per pixel. Null if the bytes are not a complete PNG or the image has
/// more than `maximumPixels`.
QImage read(const QByteArray &bytes, qint64 maximumPixels);

} // namespace PngImage
