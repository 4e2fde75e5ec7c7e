#pragma once

#include <stop_token>
#include <string>

/// Starts programs that live on when this one ends, and share nothing with it. Returns once they
/// are on their way, which may take a while where they are started over the bus; `stop` ends the
/// waiting, not the start. Failure is silent. May be called on any thread.
namespace Launch
{

/// The application whose desktop entry is at `path`.
void application(const std::string &path, const std::stop_token &stop);

/// What the user has chosen for addresses of the kind of `address`, with `address` to the letter.
/// `scheme` is how the address begins, in letters of either case.
void address(std::string address, const std::string &scheme, const std::stop_token &stop);

} // namespace Launch
