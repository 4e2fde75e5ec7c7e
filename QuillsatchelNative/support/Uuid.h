#pragma once

#include <QUuid>

#include <array>
#include <optional>
#include <string_view>

/// Reads only the canonical form, 8-4-4-4-12 hexadecimal digits in either case.
std::optional<QUuid> uuidFromText(std::string_view text);

/// The canonical form with upper-case digits.
std::array<char, 36> uuidText(const QUuid &uuid);
