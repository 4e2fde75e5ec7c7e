#pragma once

#include "support/ByteSink.h"
#include "support/FileStamp.h"

#include <QString>

#include <filesystem>
#include <functional>
#include <optional>

/// Writes what `write` passes to its sink to the file at `path` in one step: a crash leaves either
/// the old file or the new one. A new file is readable and writable by its owner only (0600). An
/// old one keeps its permissions and, as far as the user may give files away, its owner and group.
/// A symbolic link stays; its target is replaced. A mount point is overwritten: see MountedFile.
/// Returns the stamp of the new file. None, with the old file untouched, if writing fails or `path`
/// is not a regular file.
///
/// Calls `beforeReplacing` with the path of the file, or of its link target, when all bytes are on
/// the disk and only the last step is missing.
std::optional<FileStamp> replaceFile(
    const QString &path, const std::function<void(const ByteSink &)> &write,
    const std::function<void(const std::filesystem::path &)> &beforeReplacing =
        [](const std::filesystem::path & /*file*/) {});
