#pragma once

#include "support/SrgbColor.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

/// A node's colour tag. It is stored as its raw value, an English word that never changes.
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
    static constexpr std::array<Case, 8> allCases { none,  red,  orange, yellow,
                                                    green, blue, purple, pink };

    /// None unless `text` is exactly one of the eight raw values.
    static std::optional<BlockColor> fromRawValue(std::string_view text);

    std::string_view rawValue() const;

    /// The raw value is the identity.
    std::string_view id() const { return rawValue(); }

    /// What menus call it: the raw value with a capital letter.
    std::string title() const;

    /// The colour to show it in on a dark ground; absent for `none`, which tints nothing.
    std::optional<SrgbColor> swiftUIColor() const;

    bool operator==(const BlockColor &) const = default;

private:
    Case m_case;
};
