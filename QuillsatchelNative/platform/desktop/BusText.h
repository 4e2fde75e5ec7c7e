#pragma once

#include <QString>

#include <optional>
#include <string_view>

/// Texts that are sent over D-Bus.
namespace BusText
{

/// None if the receiver would not get the whole `text` (UTF-8): D-Bus strings end at a null
/// character. None also for more than one MiB, because the bus disconnects the sender of a message
/// that is too large, and receivers keep several texts.
std::optional<QString> make(std::string_view text);

} // namespace BusText
