#pragma once

#include <cstdint>

/// The port of addresses that name none. Ordinary users may not serve it, and somebody else may.
namespace WebPort
{

constexpr std::uint16_t Number = 80;

/// Where the port of 127.0.0.1 cannot be had, gives the process a network of its own if the system
/// lets it. Before there is a second thread.
void prepare();

} // namespace WebPort
