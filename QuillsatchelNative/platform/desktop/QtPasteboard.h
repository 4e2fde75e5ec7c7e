#pragma once

#include "platform/Pasteboard.h"

/// The desktop's clipboard, and its primary selection if it has one.
class QtPasteboard final : public Pasteboard
{
public:
    void setText(std::string_view text) override;
    std::optional<std::string> text() const override;
    bool hasText() const override;
    std::optional<std::string> selectedText() const override;
};
