#pragma once

#include <functional>
#include <string_view>

/// Takes bytes piece by piece, in order. What it is given is good only during the call.
using ByteSink = std::function<void(std::string_view)>;
