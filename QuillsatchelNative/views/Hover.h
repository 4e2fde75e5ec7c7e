#pragma once

class QWidget;

/// Keeps hover highlights where the pointer is when widgets move under it.
namespace Hover
{

/// Call after children of `area` have moved. Qt looks for the widget under the pointer only when
/// the pointer moves; until then the highlight would move away with its widget. Nothing happens
/// while the pointer is elsewhere, a mouse button is down or a menu is open.
void update(const QWidget &area);

} // namespace Hover
