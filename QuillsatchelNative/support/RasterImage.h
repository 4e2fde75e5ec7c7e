#pragma once

#include <QByteArray>
#include <QImage>

/// Decodes untrusted images and writes nothing to the log or to stderr. Refused are images that
/// take more than 16 MiB (2,048 x 2,048 pixels), SVG, JPEGs with more than 100 scans, and
/// run-length-encoded or truncated bitmaps.
namespace RasterImage
{

/// The image that the bytes hold, by their content: PNG, ICO, GIF, JPEG, BMP or WebP (where Qt's
/// plug-in for it is installed). Of the images of an icon that can be decoded, the smallest that is
/// at least `side` pixels wide, else the widest. Null if there is none.
QImage read(const QByteArray &bytes, int side);

} // namespace RasterImage
