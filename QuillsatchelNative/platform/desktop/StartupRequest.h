#pragma once

#include "platform/StartupToken.h"

#include <optional>
#include <string>
#include <string_view>

/// What a second start says to the first, and hears from it.
namespace StartupRequest
{

/// A short text that asks to come forward. A token that is no single short line is left out.
std::string encode(const StartupToken &token);

/// None if the text is no such request.
std::optional<StartupToken> decode(std::string_view text);

/// The first one's word that its panel comes forward.
constexpr std::string_view Answer = "Quillsatchel comes forward";

} // namespace StartupRequest
