#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

/// What a desktop's settings daemon publishes on an X display (XSETTINGS).
namespace XSettings
{

/// The settings that are numbers, by name. `data` is the value of the property
/// `_XSETTINGS_SETTINGS`. Of damaged data, the settings before the damage.
std::map<std::string, std::int32_t> integersIn(std::string_view data);

} // namespace XSettings
