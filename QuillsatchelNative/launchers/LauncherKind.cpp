#include "launchers/LauncherKind.h"

std::optional<LauncherKind> LauncherKind::fromRawValue(std::string_view text)
{
    for (const LauncherKind kind : { application, website }) {
        if (kind.rawValue() == text)
            return kind;
    }
    return std::nullopt;
}

std::string_view LauncherKind::rawValue() const
{
    return m_case == application ? "application" : "website";
}
