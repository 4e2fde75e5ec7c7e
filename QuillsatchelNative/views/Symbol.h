#pragma once

#include "support/SrgbColor.h"

#include <QIcon>
#include <QRectF>
#include <QString>

#include <optional>

class QPainter;

/// The program's drawings, crisp at every scale: symbols, which take a tint, and the artwork
/// "CupIcon", "DockIcon" and "Logo", which is shown in its own colours, without one. An unknown
/// name draws nothing.
namespace Symbol
{

/// Draws the symbol in the middle of `frame`, as large as fits.
void paint(QPainter &painter, const QString &name, const QRectF &frame,
           const std::optional<SrgbColor> &tint);

/// How a symbol stands out from the ground of a menu's selected entry, which may look like its
/// tint.
enum class WhenSelected {
    White,
    Outlined ///< in white; for a disc
};

/// The symbol as menus show it, `side` points square.
QIcon menuIcon(const QString &name, const std::optional<SrgbColor> &tint, int side,
               WhenSelected whenSelected = WhenSelected::White);

/// The symbol in the sizes that window managers and docks ask for.
QIcon applicationIcon(const QString &name);

} // namespace Symbol
