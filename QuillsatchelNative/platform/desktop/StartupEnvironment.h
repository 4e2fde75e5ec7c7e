#pragma once

#include "platform/StartupToken.h"

/// What the desktop says about a start: variables of the environment.
namespace StartupEnvironment
{

StartupToken token();

/// Removes the token, once it has been used: it is not that of the programs we start.
void clear();

/// Removes a relative XDG_DATA_HOME, which the base directory specification calls invalid. Call
/// this first: GLib, for one, would use it, and so would the programs we start.
void removeRelativeDataHome();

} // namespace StartupEnvironment
