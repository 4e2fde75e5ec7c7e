#pragma once

#include <optional>
#include <string_view>

/// What a launcher opens. Files store its raw value, an English word that never changes.
class LauncherKind
{
public:
    enum Case {
        application,
        website
    };

    constexpr LauncherKind(Case kind) // NOLINT(google-explicit-constructor)
        : m_case(kind)
    {
    }

    /// None unless `text` is exactly one of the two raw values.
    static std::optional<LauncherKind> fromRawValue(std::string_view text);

    std::string_view rawValue() const;

    bool operator==(const LauncherKind &) const = default;

private:
    Case m_case;
};
