#pragma once

#include "app/MenuItem.h"

#include <functional>
#include <vector>

class QAction;
class QMenu;
class QObject;

/// Shows menu items through Qt.
namespace MenuMirror
{

using Perform = std::function<void(const MenuItem &)>;

/// Who displays the titles. Menus over D-Bus also interpret underscores as mnemonics.
enum class Reader {
    qt,
    bus
};

/// An action that shows `item` and passes it to `perform` when chosen. The parent owns it.
QAction *makeAction(const MenuItem &item, const Perform &perform, QObject *parent,
                    Reader reader = Reader::qt);

/// Replaces the contents of `menu`.
void fill(QMenu &menu, const std::vector<MenuItem> &items, const Perform &perform);

} // namespace MenuMirror
