#pragma once

#include <functional>
#include <string_view>

/// Receives bytes piece by piece, in order. Each piece is valid only during the call.
using ByteSink = std::function<void(std::string_view)>;
