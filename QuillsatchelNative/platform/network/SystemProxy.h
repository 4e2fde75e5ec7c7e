#pragma once

#include <stop_token>
#include <string>

/// The user's proxy settings.
namespace SystemProxy
{

/// The proxy for a web address, as in "http://localhost:3128"; empty if none is set. Can block for
/// long; returns soon after a request of `stop`.
std::string forAddress(const std::string &address, const std::stop_token &stop);

} // namespace SystemProxy
