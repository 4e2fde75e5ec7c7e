#pragma once

#include <QImage>

class QIODevice;

/// Pictures that come from anywhere, read with care: a picture larger than 2,048 points square, or
/// in a format that can ask for more than its own pixels, is none.
namespace RasterImage
{

/// The picture that the bytes hold, by their content: PNG, ICO, GIF, JPEG, BMP or WebP. Of several
/// it is the smallest that is at least `side` pixels wide, else the widest. Null if there is none.
QImage read(QIODevice &bytes, int side);

} // namespace RasterImage
