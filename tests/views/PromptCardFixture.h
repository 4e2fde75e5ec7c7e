#pragma once

#include "views/Input.h"
#include "views/NodeEditor.h"
#include "views/PromptCard.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// A card in a plain widget instead of the list; records what the card reports.
class PromptCardFixture : public testing::Test
{
protected:
    PromptCardFixture()
    {
        list.resize(410, 600);
        card.setGeometry(0, 100, 410, PromptCard::cardHeight());
        card.onText = [this](const std::string &text) { reports.push_back("text " + text); };
        card.onColor = [this](BlockColor color) { reports.push_back("color " + color.title()); };
        card.onCopy = [this] { reports.emplace_back("copy"); };
        card.onPaste = [this] { reports.emplace_back("paste"); };
        card.onLaunch = [this] { reports.emplace_back("launch"); };
        card.onDelete = [this] { reports.emplace_back("delete"); };
        card.onDictate = [this] { reports.emplace_back("dictate"); };
        card.onReorder = [this](const QUuid &id, int steps) {
            EXPECT_EQ(id, block.id);
            reports.push_back("reorder " + std::to_string(steps));
        };
        render();
    }

    void render(bool isCopied = false, bool isDictating = false)
    {
        card.render(block, isCopied, isDictating);
    }

    void renderText(const std::string &text)
    {
        block.text = text;
        render();
    }

    void show() { Input::show(list); }

    QAbstractButton *button(const std::string &name) const { return Input::button(card, name); }

    NodeEditor &editor() const { return *card.findChild<NodeEditor *>(); }

    using Reports = std::vector<std::string>;

    PromptBlock block { .text = "text", .color = {} };
    QWidget list;
    PromptCard card { &list };
    Reports reports;
};
