#pragma once

#include "launchers/LauncherDocument.h"
#include "support/Uuid.h"

#include <optional>
#include <string>
#include <string_view>

/// Slots as a value and as the content of their file.
namespace ExampleLaunchers
{

inline constexpr std::string_view json = R"([
  {
    "id" : "6B1D3C0E-2F44-4A57-9E0B-7C1F2A9D8E31",
    "kind" : "application",
    "name" : "Safari",
    "target" : "\/Applications\/Safari.app"
  },
  null,
  {
    "id" : "0F7A2B94-5C1E-4D3B-A8E2-91B6C4D7F015",
    "kind" : "website",
    "name" : "example.com",
    "target" : "https:\/\/www.example.com"
  },
  null,
  null
])";

inline LauncherItem application()
{
    return { .id = *uuidFromText("6B1D3C0E-2F44-4A57-9E0B-7C1F2A9D8E31"),
             .kind = LauncherKind::application,
             .name = "Safari",
             .target = "/Applications/Safari.app" };
}

inline LauncherItem website()
{
    return { .id = *uuidFromText("0F7A2B94-5C1E-4D3B-A8E2-91B6C4D7F015"),
             .kind = LauncherKind::website,
             .name = "example.com",
             .target = "https://www.example.com" };
}

inline LauncherSlots slots()
{
    return { application(), std::nullopt, website(), std::nullopt, std::nullopt };
}

/// The example file with the first `from` replaced by `to`.
inline std::string with(std::string_view from, std::string_view to)
{
    std::string changed(json);
    return changed.replace(changed.find(from), from.size(), to);
}

inline std::optional<LauncherSlots> decode(std::string_view text)
{
    return LauncherDocument::decode(QByteArray(text.data(), static_cast<qsizetype>(text.size())));
}

inline std::string encode(const LauncherSlots &slots)
{
    std::string text;
    LauncherDocument::encode(slots, [&text](std::string_view piece) { text += piece; });
    return text;
}

} // namespace ExampleLaunchers
