#pragma once

#include <string>

/// What the desktop gives a start as proof that it is the user's wish, so that its window may come
/// forward. Each is empty where the desktop gives none.
struct StartupToken {
    std::string activationToken; // Wayland's
    std::string startupID;       // X11's

    bool operator==(const StartupToken &) const = default;
};
