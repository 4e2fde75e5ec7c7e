#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// The bytes of the regular file at `path`, with enough spare capacity for the JSON parser. None if
/// it is not a regular file, cannot be read, or is larger than `maximumSize` bytes.
std::optional<QByteArray> readFile(const QString &path, qint64 maximumSize);
