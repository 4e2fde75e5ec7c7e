#pragma once

#include "launchers/LauncherItem.h"

#include <array>
#include <optional>

/// The five places for launchers, each empty or filled; the index is the slot's number.
using LauncherSlots = std::array<std::optional<LauncherItem>, 5>;
