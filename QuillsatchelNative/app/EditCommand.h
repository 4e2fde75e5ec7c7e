#pragma once

#include "app/MenuItem.h"

class Pasteboard;
class QString;
class QWidget;

/// What the Edit menu does to the text that has the focus.
namespace EditCommand
{

/// Whether `widget` is a text that the user can edit or at least select.
bool isText(const QWidget *widget);

/// Whether `action` would do anything to `focus`, which may be null or no text at all. False for
/// actions outside the Edit menu.
bool isPossible(MenuItem::Action action, QWidget *focus, const Pasteboard &pasteboard);

/// Does nothing where it is not possible.
void perform(MenuItem::Action action, QWidget *focus, const Pasteboard &pasteboard);

/// Inserts in place of the selection. Does nothing to a read-only text.
void insert(const QString &text, QWidget *focus);

} // namespace EditCommand
