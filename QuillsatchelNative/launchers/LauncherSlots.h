#pragma once

#include "launchers/LauncherItem.h"

#include <array>
#include <optional>

/// The five launcher slots. The index is the slot number.
using LauncherSlots = std::array<std::optional<LauncherItem>, 5>;
