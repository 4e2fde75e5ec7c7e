#pragma once

#include "launchers/LauncherSlots.h"
#include "support/ByteSink.h"

#include <QByteArray>

#include <optional>

/// The slots as `launchers.json` holds them.
namespace LauncherDocument
{

/// The slots in `json`, or none: a single fault anywhere fails the whole. More than five are cut
/// off, missing ones are empty; members that we do not know are ignored.
std::optional<LauncherSlots> decode(const QByteArray &json);

/// Gives `sink` UTF-8 JSON; the same slots give the same bytes. All texts must be valid UTF-8.
void encode(const LauncherSlots &slots, ByteSink sink);

} // namespace LauncherDocument
