#pragma once

#include <optional>

/// The scale that a desktop gives to all windows through a setting that Qt does not read:
/// `Gdk/WindowScalingFactor`, which is XFCE's "Window Scaling". Qt follows the resolution only.
namespace DesktopScale
{

/// What a display tells of the scale of its windows. Resolutions are in dots per inch.
struct Settings {
    int windowScale = 1;
    std::optional<double> resolution = std::nullopt;      ///< the one Qt follows
    std::optional<double> plainResolution = std::nullopt; ///< without the window scale
};

/// What Qt has to multiply its own scale with. 1 if the resolution includes the window scale.
double factorFor(const Settings &settings);

/// Asks the display, and gives Qt the missing factor through the environment. Call it before there
/// is a QApplication or a second thread. Does nothing where Qt will not use X11, and where the
/// environment has a scale for Qt already.
void prepare();

/// Removes from the environment what `prepare` has put there, so that programs we start do not get
/// it. Needs the QApplication.
void clear();

} // namespace DesktopScale
