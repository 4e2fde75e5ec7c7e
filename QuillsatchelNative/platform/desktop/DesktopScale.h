#pragma once

#include <optional>

/// Applies the window scale of the desktop, `Gdk/WindowScalingFactor` (XFCE's "Window Scaling"). Qt
/// ignores it and follows the resolution only.
namespace DesktopScale
{

/// The scale settings of a display. Resolutions are in dots per inch.
struct Settings {
    int windowScale = 1;
    std::optional<double> resolution = std::nullopt;         ///< the one that Qt follows
    std::optional<double> unscaledResolution = std::nullopt; ///< without the window scale
};

/// The factor to apply to Qt's own scale. 1 if the resolution already includes the window scale.
double factorFor(const Settings &settings);

/// Reads the settings and passes the missing factor to Qt in the environment. Call it before
/// creating the QApplication or a thread. Does nothing if Qt will not use X11, or if the
/// environment already sets a scale for Qt.
void prepare();

/// Undoes `prepare`, so that launched programs do not inherit the factor. Needs the QApplication.
void clear();

} // namespace DesktopScale
