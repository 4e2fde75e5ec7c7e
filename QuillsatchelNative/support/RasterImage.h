#pragma once

#include <QByteArray>
#include <QImage>

/// Pictures that come from anywhere, read with care: one that is larger than 2,048 points square,
/// in a format that can ask for more than its own pixels, made to keep a reader busy, or a bitmap
/// without all its points is none.
namespace RasterImage
{

/// The picture that the bytes hold, by their content: PNG, ICO, GIF, JPEG, BMP or WebP. Of several
/// it is the smallest that is at least `side` pixels wide, else the widest. Null if there is none.
QImage read(const QByteArray &bytes, int side);

} // namespace RasterImage
