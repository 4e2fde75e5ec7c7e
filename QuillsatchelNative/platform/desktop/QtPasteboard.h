#pragma once

#include "platform/Pasteboard.h"

/// The desktop's clipboard selection.
class QtPasteboard final : public Pasteboard
{
public:
    void setText(std::string_view text) override;
    std::optional<std::string> text() const override;
};
