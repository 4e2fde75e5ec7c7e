#pragma once

#include <filesystem>

/// A file that another one cannot take the place of, because something is mounted there.
namespace MountedFile
{

/// Overwrites the regular file at `path` with the bytes of the open file `source`, and waits until
/// they are on the disk. Meanwhile the old bytes are beside it, as `NAME.previous` or, where
/// something has that name, under the next free one (see RescueCopy): a crash leaves them there.
///
/// False if there is no room for the new bytes, or they cannot be written. The file then has the
/// old bytes again, or else the copy of them stays.
bool overwrite(const std::filesystem::path &path, int source);

} // namespace MountedFile
