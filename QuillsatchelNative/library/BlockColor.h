#pragma once

#include "support/SrgbColor.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

/// A node's colour tag. Files store its raw value, an English word that never changes.
class BlockColor
{
public:
    enum Case {
        none,
        red,
        orange,
        yellow,
        green,
        blue,
        purple,
        pink
    };

    constexpr BlockColor(Case color = none) // NOLINT(google-explicit-constructor)
        : m_case(color)
    {
    }

    /// In the order in which menus list them.
    static constexpr std::array allCases { none, red, orange, yellow, green, blue, purple, pink };

    /// None unless `text` is exactly one of the eight raw values.
    static std::optional<BlockColor> fromRawValue(std::string_view text);

    std::string_view rawValue() const;

    /// Equal to the raw value.
    std::string_view id() const { return rawValue(); }

    /// The raw value with a capital letter, for menus.
    std::string title() const;

    /// The tint on a dark background; absent for `none`.
    std::optional<SrgbColor> swiftUIColor() const;

    bool operator==(const BlockColor &) const = default;

private:
    Case m_case;
};
