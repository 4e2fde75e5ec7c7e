#pragma once

#include <string_view>

/// Writes `bytes` to an open file, waiting as long as that takes; false if it cannot be.
bool writeAll(int file, std::string_view bytes);
