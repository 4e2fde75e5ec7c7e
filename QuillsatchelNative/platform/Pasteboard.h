#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The clipboard that programs share, as far as it holds plain text (UTF-8).
class Pasteboard
{
public:
    virtual ~Pasteboard() = default;

    /// Replaces whatever lies there. An empty text lies there as an empty text.
    virtual void setText(std::string_view text) = 0;

    /// None: nothing lies there, or what lies there is not text.
    virtual std::optional<std::string> text() const = 0;
};
