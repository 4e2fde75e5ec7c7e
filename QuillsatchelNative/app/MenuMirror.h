#pragma once

#include "app/Menu.h"

#include <functional>

class QAction;
class QMenu;
class QObject;

/// Shows the program's menus through Qt's.
namespace MenuMirror
{

using Perform = std::function<void(const MenuItem &)>;

/// Who reads the titles: Qt itself, or a desktop's menus over D-Bus, which take underscores for
/// marks of mnemonics, too.
enum class Reader {
    Qt,
    Bus
};

/// An action that shows `item` and calls `perform` with it when it is chosen. The parent owns it.
QAction *makeAction(const MenuItem &item, const Perform &perform, QObject *parent,
                    Reader reader = Reader::Qt);

/// Has `menu` hold what `items` say and nothing else.
void fill(QMenu &menu, const std::vector<MenuItem> &items, const Perform &perform,
          Reader reader = Reader::Qt);

/// The entry for `action` in a menu so filled; null if there is none.
QAction *entryFor(const QMenu &menu, MenuItem::Action action);

/// What an entry so made asks for.
MenuItem::Action actionOf(const QAction &entry);

} // namespace MenuMirror
