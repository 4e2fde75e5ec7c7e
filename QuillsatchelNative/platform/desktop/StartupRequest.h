#pragma once

#include "platform/StartupToken.h"

#include <optional>
#include <string>
#include <string_view>

/// The messages between a later start and the first instance.
namespace StartupRequest
{

/// A request to show the panel. Leaves out a token that is long or has control characters.
std::string encode(const StartupToken &token);

/// None if `text` is not a request.
std::optional<StartupToken> decode(std::string_view text);

/// The answer of the first instance: it shows the panel.
constexpr std::string_view Answer = "Quillsatchel comes forward";

} // namespace StartupRequest
