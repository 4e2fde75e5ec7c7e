#pragma once

#include "support/SrgbColor.h"

#include <QIcon>
#include <QRectF>
#include <QString>

#include <optional>

class QPainter;

/// The program's drawings, sharp at every scale: symbols, which are drawn in a tint, and the
/// artwork "CupIcon", "DockIcon" and "Logo", which has its own colours and takes no tint. An
/// unknown name draws nothing.
namespace Symbol
{

/// Draws the symbol in the centre of `frame`, as large as fits.
void paint(QPainter &painter, const QString &name, const QRectF &frame,
           const std::optional<SrgbColor> &tint);

/// How a symbol contrasts with the highlight of a selected menu entry, which may resemble its tint.
enum class WhenSelected {
    white,
    outlined ///< with a white outline; for a disc
};

/// The symbol as a menu icon, `side` points square.
QIcon menuIcon(const QString &name, const std::optional<SrgbColor> &tint, int side,
               WhenSelected whenSelected = WhenSelected::white);

/// The symbol in the sizes that window managers and docks use.
QIcon applicationIcon(const QString &name);

} // namespace Symbol
