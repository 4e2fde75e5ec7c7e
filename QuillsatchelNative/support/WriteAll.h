#pragma once

#include <string_view>

/// Writes all `bytes` to a blocking file descriptor. False if writing fails.
bool writeAll(int file, std::string_view bytes);
