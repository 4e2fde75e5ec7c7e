#pragma once

#include "platform/Application.h"

#include <filesystem>
#include <stop_token>
#include <vector>

/// The installed applications, system-wide and of this user. Any thread.
namespace InstalledApplications
{

/// The folders of desktop entries, by precedence: an entry hides those with its id in later
/// folders. Includes those of Flatpak and Snap even if the session does not list them.
std::vector<std::filesystem::path> folders();

/// The applications in `folders` that menus show, sorted by name in the user's language. Incomplete
/// if `stop` is requested.
std::vector<Application> list(const std::vector<std::filesystem::path> &folders,
                              const std::stop_token &stop);

} // namespace InstalledApplications
