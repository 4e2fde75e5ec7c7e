#pragma once

#include <stop_token>
#include <string>

/// The proxies that the user's desktop is set to.
namespace SystemProxy
{

/// The proxy for a web address, as in "http://localhost:3128", which may take long to find out.
/// Empty where the desktop names none, and soon after `stop` is requested.
std::string of(const std::string &address, const std::stop_token &stop);

} // namespace SystemProxy
