#pragma once

#include "platform/StartupToken.h"

/// The environment variables of a launch.
namespace StartupEnvironment
{

StartupToken token();

/// Removes the token after its use, so that launched programs do not inherit it.
void clear();

/// Removes a relative XDG_DATA_HOME, which is invalid. Call this first, because GLib and launched
/// programs would use it.
void removeRelativeDataHome();

} // namespace StartupEnvironment
