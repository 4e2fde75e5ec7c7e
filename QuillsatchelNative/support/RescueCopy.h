#pragma once

#include <filesystem>
#include <optional>

/// Keeps the bytes of a file that is about to be overwritten. Copies are numbered: beside
/// `NAME.unreadable` come `NAME.unreadable-2`, `NAME.unreadable-3` and so on. Nothing that already
/// has such a name is replaced, whether it is a copy, a folder or a link.
namespace RescueCopy
{

enum class Outcome {
    kept,
    nothingThere,
    failed, ///< the file and what is beside it are as before
};

/// Keeps the regular file at `path`, or the one its links lead to, as `name` or the first numbered
/// one that is free: as a hard link or, where that is not possible, as a copy. A file that may not
/// be read (one of another user, for example) is renamed, if it is in a folder of this user.
Outcome keep(const std::filesystem::path &path, const std::filesystem::path &name);

/// Copies the regular file at `path`, for this user only (0600), to `name` or the first numbered
/// one that is free. Tells which it is; none if the copy could not be made.
std::optional<std::filesystem::path> copy(const std::filesystem::path &path,
                                          const std::filesystem::path &name);

} // namespace RescueCopy
