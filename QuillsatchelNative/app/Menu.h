#pragma once

#include "app/MenuItem.h"

#include <QString>

#include <vector>

/// A menu, apart from how a desktop shows it.
struct Menu {
    QString title = {};
    std::vector<MenuItem> items = {}; ///< top to bottom
};
