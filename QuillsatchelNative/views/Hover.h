#pragma once

class QWidget;

/// Keeps hover highlights correct when widgets move under the pointer.
namespace Hover
{

/// Call after children of `area` moved. Qt updates the widget under the pointer only when the
/// pointer moves, so until then the wrong widget would be highlighted. Does nothing while the
/// pointer is outside `area`, a mouse button is down or a menu is open.
void update(const QWidget &area);

} // namespace Hover
