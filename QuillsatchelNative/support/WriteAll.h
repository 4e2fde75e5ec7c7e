#pragma once

#include <string_view>

/// Writes `bytes` to an open file, however long that takes. False if it fails.
bool writeAll(int file, std::string_view bytes);
