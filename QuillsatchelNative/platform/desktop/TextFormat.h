#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <string>

/// The formats of clipboard text: media types or X11 target names.
namespace TextFormat
{

/// The format that loses least; empty if none is text in a known encoding.
QString best(const QStringList &formats);

/// Decodes `bytes` in `format` to valid UTF-8. Keeps a UTF-8 byte order mark.
std::string decoded(const QByteArray &bytes, const QString &format);

} // namespace TextFormat
