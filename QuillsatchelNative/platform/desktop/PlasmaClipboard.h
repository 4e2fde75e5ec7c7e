#pragma once

#include <string_view>

/// The clipboard manager of Plasma, Klipper.
namespace PlasmaClipboard
{

/// Puts `text` (UTF-8) on the clipboard. On Wayland this also works without the focus, which
/// programs need to do so themselves. Does not wait, and does nothing without Klipper or if D-Bus
/// cannot carry the text (see `BusText`).
void setText(std::string_view text);

} // namespace PlasmaClipboard
