#pragma once

#include <string>

/// The activation token of a launch. It proves that the user started the program, so that the
/// window manager raises its window. Members are empty if the desktop does not set them.
struct StartupToken {
    std::string activationToken; ///< XDG activation
    std::string startupID;       ///< X11 startup notification

    bool operator==(const StartupToken &) const = default;
};
