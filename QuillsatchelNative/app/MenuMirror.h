#pragma once

#include "app/MenuItem.h"

#include <functional>
#include <vector>

class QAction;
class QMenu;

/// Shows menu items through Qt.
namespace MenuMirror
{

using Perform = std::function<void(const MenuItem &)>;

/// Who displays the titles. Menus over D-Bus also interpret underscores as mnemonics.
enum class Reader {
    qt,
    bus
};

/// Adds an action that shows `item` and passes it to `perform` when chosen. The menu owns it. Its
/// icon appears when the menu opens.
QAction *addAction(QMenu &menu, const MenuItem &item, const Perform &perform,
                   Reader reader = Reader::qt);

/// Replaces the contents of `menu`.
void fill(QMenu &menu, const std::vector<MenuItem> &items, const Perform &perform);

} // namespace MenuMirror
