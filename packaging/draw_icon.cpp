#include <QImage>
#include <QPainter>
#include <QString>
#include <QSvgRenderer>

#include <cstdlib>
#include <iostream>

namespace
{

QImage draw(QSvgRenderer &drawing, int side)
{
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    drawing.render(&painter);
    return image;
}

} // namespace

/// Draws the application icon for the icon theme, SIDE pixels wide and high.
int main(int argc, char *argv[])
{
    if (argc != 4) {
        std::cerr << "Usage: draw_icon DRAWING.svg SIDE PICTURE.png\n";
        return EXIT_FAILURE;
    }
    QSvgRenderer drawing(QString::fromLocal8Bit(argv[1]));
    const int side = QString::fromLocal8Bit(argv[2]).toInt();
    if (!drawing.isValid() || side <= 0 ||
        !draw(drawing, side).save(QString::fromLocal8Bit(argv[3]), "PNG")) {
        std::cerr << "draw_icon: " << argv[1] << " cannot be drawn to " << argv[3] << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
