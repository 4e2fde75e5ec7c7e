#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The clipboard that programs share, as far as it holds plain text (UTF-8). Every read waits for
/// another program: one second at most, after which the answer is that there is no text.
class Pasteboard
{
public:
    virtual ~Pasteboard() = default;

    /// Replaces the clipboard's contents. An empty text is stored as an empty text.
    virtual void setText(std::string_view text) = 0;

    /// None if the clipboard is empty or holds no text.
    virtual std::optional<std::string> text() const = 0;

    /// Whether text is offered. Fetches no text.
    virtual bool hasText() const = 0;

    /// The text selected last in any program, which a middle click inserts; none on desktops
    /// without such a selection.
    virtual std::optional<std::string> selectedText() const = 0;
};
