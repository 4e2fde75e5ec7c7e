#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <string>

/// The formats in which a clipboard offers text: media types, or names of X11 targets.
namespace TextFormat
{

/// The one that loses least; empty if no text is offered in an encoding that we know.
QString best(const QStringList &formats);

/// The text in `bytes`, which are in `format`, as valid UTF-8. A byte order mark of UTF-8 stays.
std::string decoded(const QByteArray &bytes, const QString &format);

} // namespace TextFormat
