#pragma once

#include <QImage>

#include <string_view>

/// What stands for a launcher in a menu or a row: a picture, or one of the program's symbols where
/// there is none.
struct LauncherIcon {
    QImage image;                 ///< square; null where the symbol stands for the launcher
    std::string_view symbol;      ///< its name
    std::string_view description; ///< what the symbol says, for those who hear it
};
