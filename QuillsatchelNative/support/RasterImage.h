#pragma once

#include <QByteArray>
#include <QImage>

/// Decodes untrusted images without writing to the log or to stderr. Rejects images that take more
/// than 16 MiB (2,048 x 2,048 pixels), SVG, JPEGs with more than 100 scans, and run-length-encoded
/// or truncated bitmaps.
namespace RasterImage
{

/// Recognises PNG, ICO, GIF, JPEG, BMP and WebP (if Qt's plug-in is installed) by content. Of the
/// images in an icon, chooses the smallest that is at least `side` pixels wide, else the widest;
/// skips those that cannot be decoded. Null if there is no valid image.
QImage read(const QByteArray &bytes, int side);

} // namespace RasterImage
