#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

/// The settings that a settings daemon publishes on an X display (XSETTINGS).
namespace XSettings
{

/// The integer settings by name. `data` is the value of the property `_XSETTINGS_SETTINGS`. If it
/// is damaged, returns the settings before the damage.
std::map<std::string, std::int32_t> integersIn(std::string_view data);

} // namespace XSettings
