#pragma once

#include "views/TextWidget.h"

#include <functional>
#include <optional>

class Pasteboard;
class QMenu;

/// The Edit menu: what the user can do with the focused text.
namespace EditMenu
{

using FindText = std::function<std::optional<TextWidget>()>;

/// Fills an empty menu. `findText` is called whenever the menu opens, to disable the entries that
/// would do nothing, and when an entry is chosen. `pasteboard` must outlive the menu.
void fill(QMenu &menu, const FindText &findText, const Pasteboard &pasteboard);

} // namespace EditMenu
