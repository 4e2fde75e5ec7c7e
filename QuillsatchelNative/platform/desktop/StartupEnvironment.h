#pragma once

#include "platform/StartupToken.h"

/// Where a desktop puts the token of a start: variables of the environment.
namespace StartupEnvironment
{

StartupToken token();

/// Removes the token, once it has been used: it is not that of the programs we start.
void clear();

} // namespace StartupEnvironment
