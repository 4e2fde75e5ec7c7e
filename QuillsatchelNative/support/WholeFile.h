#pragma once

#include "support/ByteSink.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>

/// Reading and replacing whole files. Nothing here waits for a pipe or leaves half a file.
namespace WholeFile
{

/// The largest file that is read as a library: parsing takes up to a dozen times the memory.
inline constexpr qint64 MaximumSize = qint64(512) * 1024 * 1024;

/// The bytes of the regular file at `path`, with spare capacity behind them that a parser may
/// read past the end into; none if there is no such file, it cannot be read, or it is larger than
/// `maximumSize` bytes.
std::optional<QByteArray> read(const QString &path, qint64 maximumSize = MaximumSize);

/// Puts what `write` gives its sink at `path` in one step: a crash leaves either the old file or
/// the new one. A new file is for its owner only (0600). An old one keeps its permissions and, as
/// far as the user may give files away, its owner and group. A link stays a link. A mount point is
/// overwritten instead: see MountedFile.
///
/// False, with the old file untouched, if it cannot be done, and where what is there is no regular
/// file.
bool replace(const QString &path, const std::function<void(const ByteSink &)> &write);

} // namespace WholeFile
