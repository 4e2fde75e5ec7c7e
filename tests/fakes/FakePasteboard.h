#pragma once

#include "platform/Pasteboard.h"

/// A clipboard that no other program shares.
class FakePasteboard final : public Pasteboard
{
public:
    void setText(std::string_view text) override { contents = text; }

    std::optional<std::string> text() const override { return contents; }

    bool hasText() const override { return contents.has_value(); }

    std::optional<std::string> selectedText() const override { return selection; }

    std::optional<std::string> contents;
    std::optional<std::string> selection;
};
