#pragma once

#include <filesystem>
#include <optional>

/// Keeps the bytes of a file that is about to be overwritten. The first copy is `NAME.unreadable`,
/// the next are `NAME.unreadable-2`, `NAME.unreadable-3` and so on. Never replaces a file, folder
/// or link that has such a name.
namespace RescueCopy
{

enum class Outcome {
    kept,
    noFile,
    failed, ///< nothing changed on the disk
};

/// Keeps the regular file at `path`, or its link target, as `name` or the first free numbered name:
/// as a hard link or, where that is impossible, as a copy. A file that this user may not read is
/// renamed if its folder belongs to this user.
Outcome keep(const std::filesystem::path &path, const std::filesystem::path &name);

/// Copies the regular file at `path`, for its owner only (0600), to `name` or the first free
/// numbered name, and returns that name. None if copying failed.
std::optional<std::filesystem::path> copy(const std::filesystem::path &path,
                                          const std::filesystem::path &name);

} // namespace RescueCopy
