#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// The bytes of the regular file at `path`, with spare capacity behind them that a parser may read
/// past the end into. None if there is no such file, it cannot be read, or it is larger than
/// `maximumSize` bytes. Never waits for a pipe.
std::optional<QByteArray> readFile(const QString &path, qint64 maximumSize);
