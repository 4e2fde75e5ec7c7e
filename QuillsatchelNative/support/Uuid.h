#pragma once

#include <QUuid>

#include <array>
#include <optional>
#include <string_view>

/// Reads the canonical form, 8-4-4-4-12 hexadecimal digits of either case; nothing else is taken
/// for a UUID (no braces, no missing hyphens).
std::optional<QUuid> uuidFromText(std::string_view text);

/// The canonical form with upper-case digits.
std::array<char, 36> uuidText(const QUuid &uuid);
