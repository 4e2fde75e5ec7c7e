#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Plain text on the clipboard (UTF-8). Every read waits at most one second for the program that
/// owns the clipboard, and then reports no text.
class Pasteboard
{
public:
    virtual ~Pasteboard() = default;

    /// Replaces the clipboard's contents. An empty text is stored as an empty text.
    virtual void setText(std::string_view text) = 0;

    /// None if the clipboard is empty or holds no text.
    virtual std::optional<std::string> text() const = 0;

    /// Whether the clipboard offers text. Does not read it.
    virtual bool hasText() const = 0;

    /// The primary selection: the text selected last in any program, which a middle click inserts.
    /// None on desktops without it.
    virtual std::optional<std::string> selectedText() const = 0;
};
