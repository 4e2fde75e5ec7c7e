#pragma once

#include "dictation/DictationController.h"
#include "fakes/FakeVocabulary.h"
#include "views/EmptyState.h"
#include "views/NodeEditor.h"
#include "views/NodeList.h"
#include "views/OverlayScrollBar.h"
#include "views/PromptCard.h"
#include "views/ViewFixture.h"

#include <QScrollBar>

#include <algorithm>
#include <optional>
#include <vector>

/// A list of the panel's size, rendered only on request.
class NodeListFixture : public ViewFixture
{
protected:
    void openList(const std::vector<PromptTab> &tabs)
    {
        open(tabs);
        makeList();
        Input::show(window);
        draw();
    }

    /// Creates the list for the open store, and does not show it.
    void makeList()
    {
        window.resize(430, Height);
        list = new NodeList(
            machine.mainQueue, [this] { return content(); },
            [this](PromptCard &card) { wire(card); }, &window);
        list->resize(430, Height);
    }

    void openList(const Texts &texts) { openList({ tabOf("Prompts", texts) }); }

    /// Renders the list, with the cards that it prepares later.
    void draw()
    {
        list->render();
        advance(Milliseconds(500));
        settle();
    }

    std::size_t cardCount() const
    {
        return static_cast<std::size_t>(list->findChildren<PromptCard *>().size());
    }

    QScrollBar &scrollBar() const
    {
        return *list->findChild<OverlayScrollBar *>(QString(), Qt::FindDirectChildrenOnly);
    }

    void scrollTo(int offset)
    {
        scrollBar().setValue(offset);
        settle();
    }

    /// The cards that are at least partly visible, top to bottom.
    std::vector<PromptCard *> visibleCards() const
    {
        std::vector<PromptCard *> cards;
        for (auto *const card : list->findChildren<PromptCard *>()) {
            if (!card->isHidden() && card->geometry().intersects(list->rect()))
                cards.push_back(card);
        }
        std::ranges::sort(cards, {}, [](const PromptCard *card) { return card->y(); });
        return cards;
    }

    /// Null if no card shows this row.
    PromptCard *cardOf(std::size_t row) const
    {
        const int top = topOf(row);
        for (auto *const card : list->findChildren<PromptCard *>()) {
            if (!card->isHidden() && card->y() == top)
                return card;
        }
        return nullptr;
    }

    int topOf(std::size_t row) const
    {
        return 10 + static_cast<int>(row) * (PromptCard::cardHeight() + 10) - scrollBar().value();
    }

    static NodeEditor &editorOf(const PromptCard &card) { return *card.findChild<NodeEditor *>(); }

    static std::string textOf(const PromptCard &card)
    {
        return editorOf(card).toPlainText().toStdString();
    }

    /// Exactly the visible rows have a card, and each card shows the node of its row.
    void expectStoreShown() const
    {
        std::vector<std::size_t> rows;
        for (std::size_t row = 0; row < blocks().size(); ++row) {
            if (topOf(row) < Height && topOf(row) + PromptCard::cardHeight() > 0)
                rows.push_back(row);
        }
        const auto cards = visibleCards();
        ASSERT_EQ(cards.size(), rows.size());
        for (std::size_t index = 0; index < rows.size(); ++index) {
            auto &card = *cards[index];
            const auto row = rows[index];
            EXPECT_EQ(card.geometry(), QRect(10, topOf(row), 410, PromptCard::cardHeight()));
            EXPECT_EQ(card.blockID(), blocks()[row].id);
            EXPECT_EQ(textOf(card), blocks()[row].text);
            EXPECT_EQ(Input::accessibleName(card),
                      "Node " + std::to_string(row + 1) + " of " + std::to_string(blocks().size()));
        }
        expectAccessibleOrder();
    }

    /// The accessibility tree lists the cards from top to bottom.
    void expectAccessibleOrder() const
    {
        std::vector<int> tops;
        auto *const tree = QAccessible::queryAccessibleInterface(list);
        for (int index = 0; index < tree->childCount(); ++index) {
            auto *const child = tree->child(index);
            if (child->role() == QAccessible::Grouping && !child->state().invisible)
                tops.push_back(child->rect().top());
        }
        EXPECT_GE(tops.size(), visibleCards().size());
        EXPECT_TRUE(std::ranges::is_sorted(tops));
    }

    static constexpr int Height = 500;

    FakeVocabulary vocabulary;
    DictationController dictation { machine.platform, vocabulary };
    QWidget window;
    NodeList *list = nullptr;

private:
    NodeList::Content content() const
    {
        const auto *const tab = store().activeTab();
        if (!tab)
            return {};
        return { .id = tab->id,
                 .count = tab->blocks.size(),
                 .node = [tab](std::size_t row) -> const PromptBlock & { return tab->blocks[row]; },
                 .copiedID = store().copiedBlockID().get(),
                 .dictatedID = dictation.activeBlockID().get() };
    }

    void wire(PromptCard &card)
    {
        card.onText = [this, &card](const std::string &text) {
            store().updateBlock(card.blockID(), text);
        };
    }
};
