#pragma once

#include <filesystem>

/// Writes files that cannot be replaced by renaming because they are mount points.
namespace MountedFile
{

/// Overwrites the regular file at `path` with the bytes of the open file `source`, and waits until
/// they are on the disk. Until then a copy of the old bytes is beside the file, as `NAME.previous`
/// or under the next free name (see RescueCopy), and stays there after a crash. False if the new
/// bytes do not fit or cannot be written; the old bytes are then restored, or else their copy
/// stays.
bool overwrite(const std::filesystem::path &path, int source);

} // namespace MountedFile
