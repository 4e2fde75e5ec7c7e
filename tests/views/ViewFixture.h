#pragma once

#include "library/SatchelStoreFixture.h"
#include "views/Input.h"
#include "views/PromptCard.h"

#include <QCoreApplication>
#include <QEvent>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

/// A fake platform and a store that starts from the given tabs.
class ViewFixture : public SatchelStoreFixture
{
protected:
    using Texts = std::vector<std::string>;

    static PromptTab tabOf(const std::string &name, const Texts &texts = {})
    {
        PromptTab tab { .name = name, .blocks = {} };
        for (const auto &text : texts)
            tab.blocks.push_back({ .text = text, .color = {} });
        return tab;
    }

    /// "text 0", "text 1" and so on.
    static Texts numberedTexts(std::size_t count)
    {
        Texts texts;
        for (std::size_t number = 0; number < count; ++number)
            texts.push_back("text " + std::to_string(number));
        return texts;
    }

    /// Starts the store from a file with these tabs; the first is active.
    SatchelStore &open(const std::vector<PromptTab> &tabs)
    {
        writeFile(tabs);
        return m_store.emplace(machine.platform);
    }

    SatchelStore &store() { return *m_store; }

    const SatchelStore &store() const { return *m_store; }

    /// The nodes of the active tab.
    const std::vector<PromptBlock> &blocks() const { return store().activeTab()->blocks; }

    QUuid tabID(std::size_t index) const { return store().tabs().get().at(index).id; }

    /// Top to bottom.
    static std::vector<PromptCard *> visibleCardsIn(const QWidget &view)
    {
        auto cards = view.findChildren<PromptCard *>();
        cards.removeIf([](const PromptCard *card) { return card->visibleRegion().isEmpty(); });
        std::ranges::sort(cards, {}, [](const PromptCard *card) { return card->y(); });
        return { cards.begin(), cards.end() };
    }

    /// Renders pending changes and deletes what was to be deleted later.
    void settle()
    {
        machine.mainQueue.runPending();
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

private:
    std::optional<SatchelStore> m_store;
};
