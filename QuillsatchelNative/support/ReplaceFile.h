#pragma once

#include "support/ByteSink.h"

#include <QString>

#include <functional>

/// Writes what `write` passes to its sink to the file at `path` in one step: a crash leaves either
/// the old file or the new one. A new file is readable and writable by its owner only (0600). An
/// old one keeps its permissions and, as far as the user may give files away, its owner and group.
/// A symbolic link stays; its target is replaced. A mount point is overwritten: see MountedFile.
/// False, with the old file untouched, if writing fails or `path` is not a regular file.
bool replaceFile(const QString &path, const std::function<void(const ByteSink &)> &write);
