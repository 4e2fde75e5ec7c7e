#include <QFileInfo>
#include <QPainter>
#include <QPicture>
#include <QString>
#include <QSvgRenderer>

#include <cstdlib>
#include <iostream>

namespace
{

/// Saves the painting commands of an SVG file as NAME.picture in `folder`. The bounding rectangle
/// of the picture is that of the drawing.
bool record(const QString &drawing, const QString &folder)
{
    QSvgRenderer renderer(drawing);
    const QRect bounds(QPoint(), renderer.defaultSize());
    if (!renderer.isValid() || bounds.isEmpty())
        return false;
    QPicture picture;
    picture.setBoundingRect(bounds); // saved only if it is set before painting
    QPainter painter(&picture);
    renderer.render(&painter, bounds);
    painter.end();
    const QString name = QFileInfo(drawing).completeBaseName();
    return picture.save(folder + u'/' + name + QStringLiteral(".picture"));
}

} // namespace

/// Records drawings, so that the program needs no SVG library. Creates no application: its fonts
/// would become part of the pictures, which must not depend on the machine.
int main(int argc, char *argv[])
{
    if (argc < 3) {
        std::cerr << "Usage: record_drawings FOLDER DRAWING.svg...\n";
        return EXIT_FAILURE;
    }
    for (int argument = 2; argument < argc; ++argument) {
        if (!record(QString::fromLocal8Bit(argv[argument]), QString::fromLocal8Bit(argv[1]))) {
            std::cerr << "record_drawings: " << argv[argument] << " cannot be recorded\n";
            return EXIT_FAILURE;
        }
    }
    return EXIT_SUCCESS;
}
