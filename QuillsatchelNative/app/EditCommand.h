#pragma once

#include "app/MenuItem.h"

class QWidget;

/// What the Edit menu does to the text that has the focus.
namespace EditCommand
{

/// Whether `action` would do anything to `focus`, which may be null or no text at all. False for
/// what is not in the Edit menu.
bool isPossible(MenuItem::Action action, QWidget *focus);

/// Does nothing where it is not possible.
void perform(MenuItem::Action action, QWidget *focus);

} // namespace EditCommand
