#pragma once

#include <cstdint>

/// The port of addresses that name none. Only root may serve it on the machine's own network.
namespace WebPort
{

constexpr std::uint16_t Number = 80;

/// Gives the process a network of its own if the system permits that. Otherwise the port is the
/// machine's, if that is free. Call before there is a second thread.
void prepare();

} // namespace WebPort
