#pragma once

#include <cstdint>

/// The default HTTP port. Only root may listen on it in the machine's network namespace.
namespace WebPort
{

constexpr std::uint16_t Number = 80;

/// Enters a separate network namespace if the system permits it. Otherwise the port is the
/// machine's. Call it before creating threads.
void prepare();

} // namespace WebPort
