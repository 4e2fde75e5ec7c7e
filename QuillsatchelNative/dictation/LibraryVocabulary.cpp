#include "dictation/LibraryVocabulary.h"

#include <algorithm>

LibraryVocabulary::LibraryVocabulary(const SatchelStore &store, const LauncherStore &launcherStore)
    : m_store(store)
    , m_launcherStore(launcherStore)
{
}

std::uint64_t LibraryVocabulary::revision()
{
    if (m_revision == 0) {
        const auto count = [this](const auto &) { ++m_revision; };
        m_observations = { m_store.tabs().sink(count), m_store.activeTabID().sink(count),
                           m_launcherStore.slots().sink(count) };
    }
    return m_revision;
}

void LibraryVocabulary::rewind()
{
    m_tab = 0;
    m_text = 0;
    m_slot = 0;
}

std::optional<VocabularySource::Text> LibraryVocabulary::next()
{
    if (const auto text = nextOfTabs(1))
        return text;
    if (const auto name = nextLauncherName())
        return name;
    return nextOfTabs(m_store.tabs().get().size());
}

/// Of the tabs before this one.
std::optional<VocabularySource::Text> LibraryVocabulary::nextOfTabs(std::size_t end)
{
    for (; m_tab < std::min(end, m_store.tabs().get().size()); ++m_tab) {
        if (const auto text = nextOfTab())
            return text;
        m_text = 0;
    }
    return std::nullopt;
}

/// The active tab, then the others in their order.
const PromptTab &LibraryVocabulary::tab() const
{
    const auto &tabs = m_store.tabs().get();
    const auto active = m_store.activeTabIndex().value_or(0);
    if (m_tab == 0)
        return tabs[active];
    return tabs[m_tab <= active ? m_tab - 1 : m_tab];
}

std::optional<VocabularySource::Text> LibraryVocabulary::nextOfTab()
{
    const auto &[id, name, blocks] = tab();
    if (m_text > blocks.size())
        return std::nullopt;
    const auto index = m_text++;
    const bool isName = index == 0;
    return Text { .text = isName ? name : blocks[index - 1].text,
                  .isProminent = m_tab == 0,
                  .isTitle = isName };
}

std::optional<VocabularySource::Text> LibraryVocabulary::nextLauncherName()
{
    const auto &slots = m_launcherStore.slots().get();
    while (m_slot < slots.size()) {
        if (const auto &item = slots[m_slot++])
            return Text { .text = item->name, .isTitle = true };
    }
    return std::nullopt;
}
