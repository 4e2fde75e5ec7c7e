#pragma once

#include "library/SatchelDocument.h"
#include "support/Uuid.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// A library as a value and as the content of its file.
namespace ExampleLibrary
{

inline constexpr std::string_view json = R"({
  "activeTabID" : "A1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2D",
  "tabs" : [
    {
      "blocks" : [
        {
          "color" : "green",
          "id" : "0F1E2D3C-4B5A-4968-8776-655443322110",
          "text" : "Summarise the following text in three bullet points:"
        },
        {
          "color" : "none",
          "id" : "5A6B7C8D-9E0F-4A1B-8C2D-3E4F5A6B7C8D",
          "text" : "Review this code for bugs."
        }
      ],
      "id" : "A1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2D",
      "name" : "Prompts"
    }
  ]
})";

inline SatchelDocument document()
{
    const auto tabID = *uuidFromText("A1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2D");
    return { .activeTabID = tabID,
             .tabs = {
                 { .id = tabID,
                   .name = "Prompts",
                   .blocks = { { .id = *uuidFromText("0F1E2D3C-4B5A-4968-8776-655443322110"),
                                 .text = "Summarise the following text in three bullet points:",
                                 .color = BlockColor::green },
                               { .id = *uuidFromText("5A6B7C8D-9E0F-4A1B-8C2D-3E4F5A6B7C8D"),
                                 .text = "Review this code for bugs.",
                                 .color = BlockColor::none } } } } };
}

/// The example file with the first `from` replaced by `to`.
inline std::string with(std::string_view from, std::string_view to)
{
    std::string changed(json);
    return changed.replace(changed.find(from), from.size(), to);
}

inline std::optional<SatchelDocument> decode(std::string_view text)
{
    return SatchelDocument::decode(QByteArray(text.data(), static_cast<qsizetype>(text.size())));
}

/// The text of the first block, decoded from the JSON string `literal`, given without quotes.
inline std::optional<std::string> decodedText(std::string_view literal)
{
    const auto document =
        decode(with("Summarise the following text in three bullet points:", literal));
    return document ? std::optional(document->tabs.front().blocks.front().text) : std::nullopt;
}

inline std::string repeated(std::string_view part, std::size_t times)
{
    std::string text;
    for (std::size_t i = 0; i < times; ++i)
        text += part;
    return text;
}

} // namespace ExampleLibrary
