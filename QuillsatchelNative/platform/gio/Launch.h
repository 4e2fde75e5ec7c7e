#pragma once

#include <stop_token>
#include <string>

/// Starts programs that outlive this one and inherit no open files from it. Returns once they are
/// started, which can take long over D-Bus; `stop` ends the wait, not the start. Failure is silent.
/// Any thread.
namespace Launch
{

/// The application whose desktop entry is at `path`.
void application(const std::string &path, const std::stop_token &stop);

/// Opens `address`, unchanged, in the user's default application for `scheme`, its URI scheme in
/// any case.
void address(std::string address, const std::string &scheme, const std::stop_token &stop);

} // namespace Launch
