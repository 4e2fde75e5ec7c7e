#pragma once

#include "launchers/LauncherSlots.h"
#include "support/ByteSink.h"

#include <QByteArray>

#include <optional>

/// The slots as stored in `launchers.json`.
namespace LauncherDocument
{

/// None if there is any error in `json`. Drops slots after the fifth, leaves missing ones empty,
/// and ignores unknown members.
std::optional<LauncherSlots> decode(const QByteArray &json);

/// Passes UTF-8 JSON to `sink`. Equal slots give equal bytes. All texts must be valid UTF-8.
void encode(const LauncherSlots &slots, ByteSink sink);

} // namespace LauncherDocument
