#pragma once

#include "platform/Application.h"

#include <filesystem>
#include <stop_token>
#include <vector>

/// The applications that are installed here, for all or for this user alone. May be asked on any
/// thread.
namespace InstalledApplications
{

/// Where desktop entries are looked for: an entry in one of the folders replaces those of its name
/// in later ones. What Flatpak and Snap install is there also where the session does not know.
std::vector<std::filesystem::path> folders();

/// The applications in `folders` that menus show, sorted by name as the user's language does. Fewer
/// once `stop` is requested.
std::vector<Application> list(const std::vector<std::filesystem::path> &folders,
                              const std::stop_token &stop);

} // namespace InstalledApplications
