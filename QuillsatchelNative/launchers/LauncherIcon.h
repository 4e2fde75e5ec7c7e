#pragma once

#include <QImage>

#include <string_view>

/// The icon of a launcher in a menu or row: an image or, without one, a symbol.
struct LauncherIcon {
    QImage image;                 ///< square; null if the symbol is shown
    std::string_view symbol;      ///< the symbol's name
    std::string_view description; ///< the symbol's text alternative, for screen readers
};
