#include "support/RescueCopy.h"

#include "support/CopyFile.h"
#include "support/LinkTarget.h"

#include <algorithm>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace RescueCopy
{

namespace
{

namespace fs = std::filesystem;

bool isInOwnFolder(const fs::path &file)
{
    struct stat folder {
    };

    return stat(file.parent_path().c_str(), &folder) == 0 && folder.st_uid == geteuid();
}

bool isReadable(const fs::path &file)
{
    return faccessat(AT_FDCWD, file.c_str(), R_OK, AT_EACCESS) == 0;
}

fs::path numbered(fs::path name, int number)
{
    return number == 1 ? name : name += "-" + std::to_string(number);
}

/// The taken names, followed by the first free one. Empty if a name cannot be examined.
std::vector<fs::path> namesUpToFree(const fs::path &name)
{
    std::vector<fs::path> names;
    for (int number = 1;; ++number) {
        std::error_code error;
        const auto type =
            fs::symlink_status(names.emplace_back(numbered(name, number)), error).type();
        if (type == fs::file_type::not_found)
            return names;
        if (type == fs::file_type::none)
            return {};
    }
}

bool isHardLink(const fs::path &name, const fs::path &file)
{
    std::error_code error;
    return !fs::is_symlink(name, error) && fs::equivalent(name, file, error);
}

bool link(const fs::path &file, const fs::path &name)
{
    std::error_code error;
    fs::create_hard_link(file, name, error);
    return !error;
}

bool move(const fs::path &file, const fs::path &name)
{
    std::error_code error;
    fs::rename(file, name, error);
    return !error;
}

// Renaming an unreadable file frees its name, so that the next save creates a readable file.
bool keepAs(const fs::path &file, const fs::path &name)
{
    if (!isReadable(file) && isInOwnFolder(file) && move(file, name))
        return true;
    return link(file, name) || copyFile(file, name);
}

bool keepFile(const fs::path &file, const fs::path &name)
{
    const auto names = namesUpToFree(name);
    const auto isKept = [&file](const fs::path &other) { return isHardLink(other, file); };
    return !names.empty() &&
           (std::any_of(names.begin(), names.end() - 1, isKept) || keepAs(file, names.back()));
}

} // namespace

Outcome keep(const fs::path &path, const fs::path &name)
{
    std::error_code error;
    const auto file = linkTarget(path);
    const auto type = file ? fs::symlink_status(*file, error).type() : fs::file_type::not_found;
    if (type == fs::file_type::not_found)
        return Outcome::noFile;
    return type == fs::file_type::regular && keepFile(*file, name) ? Outcome::kept
                                                                   : Outcome::failed;
}

std::optional<fs::path> copy(const fs::path &path, const fs::path &name)
{
    const auto names = namesUpToFree(name);
    return !names.empty() && copyFile(path, names.back()) ? std::optional(names.back())
                                                          : std::nullopt;
}

} // namespace RescueCopy
