#include "library/SatchelStore.h"

#include "library/SatchelDocument.h"
#include "platform/ApplicationDocument.h"
#include "support/WebAddress.h"
#include "support/Whitespace.h"

#include <QPointer>

#include <algorithm>
#include <chrono>
#include <utility>

namespace
{

using namespace std::chrono_literals;

constexpr auto SaveDelay = 250ms;
constexpr auto CopiedMarkDuration = 1400ms;

std::ptrdiff_t sumOrStop(std::size_t index, std::ptrdiff_t offset)
{
    std::ptrdiff_t sum = 0;
    if (__builtin_add_overflow(static_cast<std::ptrdiff_t>(index), offset, &sum))
        qFatal("The offset of a moved node overflows.");
    return sum;
}

} // namespace

SatchelStore::SatchelStore(Platform &platform)
    : m_platform(platform)
    , m_file(applicationDocument(QStringLiteral("prompts.json"), platform))
{
    load();
}

std::optional<std::size_t> SatchelStore::activeTabIndex() const
{
    const auto &tabs = m_tabs.get();
    if (tabs.empty())
        return std::nullopt;
    if (!m_activeTabID.get())
        return 0;
    const auto found = std::ranges::find(tabs, *m_activeTabID.get(), &PromptTab::id);
    return found == tabs.end() ? 0 : static_cast<std::size_t>(found - tabs.begin());
}

const PromptTab *SatchelStore::activeTab() const
{
    const auto index = activeTabIndex();
    return index ? &m_tabs.get()[*index] : nullptr;
}

const PromptTab *SatchelStore::tab(QUuid id) const
{
    const auto &tabs = m_tabs.get();
    const auto found = std::ranges::find(tabs, id, &PromptTab::id);
    return found == tabs.end() ? nullptr : &*found;
}

const PromptBlock *SatchelStore::block(QUuid tabID, QUuid id) const
{
    const auto *const owner = tab(tabID);
    if (!owner)
        return nullptr;
    const auto found = std::ranges::find(owner->blocks, id, &PromptBlock::id);
    return found == owner->blocks.end() ? nullptr : &*found;
}

const PromptBlock *SatchelStore::activeBlock(QUuid id) const
{
    const auto position = locate(id);
    return position ? &m_tabs.get()[position->tab].blocks[position->block] : nullptr;
}

void SatchelStore::addTab()
{
    PromptTab tab { .name = "New Tab" };
    const auto id = tab.id;
    m_tabs.edit([&tab](auto &tabs) { tabs.push_back(std::move(tab)); });
    m_activeTabID.set(id);
    scheduleSave();
}

void SatchelStore::renameTab(QUuid id, std::string name)
{
    const auto &tabs = m_tabs.get();
    const auto found = std::ranges::find(tabs, id, &PromptTab::id);
    if (found == tabs.end())
        return;
    const auto index = static_cast<std::size_t>(found - tabs.begin());
    m_tabs.edit([index, &name](auto &edited) { edited[index].name = std::move(name); });
    scheduleSave();
}

void SatchelStore::deleteTab(QUuid id)
{
    if (m_tabs.get().size() < 2)
        return;
    m_tabs.edit([this, id](auto &tabs) {
        m_lastPosition.reset();
        std::erase_if(tabs, [id](const PromptTab &tab) { return tab.id == id; });
    });
    if (m_activeTabID.get() == id) {
        const auto &remaining = m_tabs.get();
        m_activeTabID.set(remaining.empty() ? std::nullopt : std::optional(remaining.front().id));
    }
    scheduleSave();
}

void SatchelStore::selectTab(QUuid id)
{
    m_activeTabID.set(id);
    scheduleSave();
}

void SatchelStore::addBlock()
{
    const auto tab = activeTabIndex();
    if (!tab)
        return;
    m_tabs.edit([tab](auto &tabs) { tabs[*tab].blocks.emplace_back(); });
    scheduleSave();
}

void SatchelStore::deleteBlock(QUuid id)
{
    const auto tab = activeTabIndex();
    if (!tab)
        return;
    m_tabs.edit([this, tab, id](auto &tabs) {
        m_lastPosition.reset();
        std::erase_if(tabs[*tab].blocks, [id](const PromptBlock &block) { return block.id == id; });
    });
    scheduleSave();
}

void SatchelStore::updateBlock(QUuid id, std::string text)
{
    editBlock(id, [&text](PromptBlock &block) { block.text = std::move(text); });
}

void SatchelStore::setBlockColor(QUuid id, BlockColor color)
{
    editBlock(id, [color](PromptBlock &block) { block.color = color; });
}

void SatchelStore::moveBlock(QUuid id, std::ptrdiff_t offset)
{
    const auto position = locate(id);
    if (!position)
        return;
    const auto &blocks = m_tabs.get()[position->tab].blocks;
    const auto last = static_cast<std::ptrdiff_t>(blocks.size()) - 1;
    const auto from = static_cast<std::ptrdiff_t>(position->block);
    const auto to = std::clamp(sumOrStop(position->block, offset), std::ptrdiff_t(0), last);
    if (to == from)
        return;
    m_tabs.edit([this, tab = position->tab, from, to](auto &tabs) {
        m_lastPosition.reset();
        const auto begin = tabs[tab].blocks.begin();
        if (from < to)
            std::rotate(begin + from, begin + from + 1, begin + to + 1);
        else
            std::rotate(begin + to, begin + from, begin + from + 1);
    });
    scheduleSave();
}

void SatchelStore::copyBlock(QUuid id)
{
    if (const auto *const block = activeBlock(id))
        copy(*block);
}

void SatchelStore::copyBlock(QUuid tabID, QUuid id)
{
    if (const auto *const found = block(tabID, id))
        copy(*found);
}

void SatchelStore::copy(const PromptBlock &block)
{
    const QUuid id = block.id;
    m_platform.pasteboard.setText(block.text);
    m_copiedBlockID.set(id);
    // The next copy does not cancel this: the comparison lets a newer mark last its full time.
    m_platform.mainQueue.asyncAfter(CopiedMarkDuration, [store = QPointer(this), id] {
        if (store && store->m_copiedBlockID.get() == id)
            store->m_copiedBlockID.set(std::nullopt);
    });
}

void SatchelStore::pasteIntoBlock(QUuid id)
{
    if (auto text = m_platform.pasteboard.text())
        updateBlock(id, std::move(*text));
}

void SatchelStore::openBlockURL(QUuid id)
{
    const auto *const block = activeBlock(id);
    if (!block)
        return;
    const auto address = WebAddress::parse(trimmed(block->text));
    if (address && address->isHttp())
        m_platform.workspace.open(*address);
}

void SatchelStore::load()
{
    if (loadFile())
        return;
    PromptTab tab;
    m_activeTabID.set(tab.id);
    m_tabs.edit([&tab](auto &tabs) { tabs.push_back(std::move(tab)); });
}

bool SatchelStore::loadFile()
{
    auto document = m_file.load(&SatchelDocument::decode);
    if (!document || document->tabs.empty())
        return false;
    m_tabs.set(std::move(document->tabs));
    const auto &tabs = m_tabs.get();
    const bool namesATab = document->activeTabID && std::ranges::find(tabs, *document->activeTabID,
                                                                      &PromptTab::id) != tabs.end();
    m_activeTabID.set(namesATab ? *document->activeTabID : tabs.front().id);
    return true;
}

void SatchelStore::scheduleSave()
{
    m_saveWorkItem.cancel();
    m_saveWorkItem = m_platform.mainQueue.asyncAfter(SaveDelay, [store = QPointer(this)] {
        if (store)
            store->saveNow();
    });
}

void SatchelStore::saveNow()
{
    m_file.save([this](const ByteSink &sink) {
        SatchelDocument::encode(m_activeTabID.get(), m_tabs.get(), sink);
    });
}

std::optional<SatchelStore::Position> SatchelStore::locate(QUuid id) const
{
    const auto tab = activeTabIndex();
    if (!tab)
        return std::nullopt;
    if (m_lastPosition && m_lastPosition->tab == *tab && m_lastPosition->id == id)
        return m_lastPosition;
    const auto &blocks = m_tabs.get()[*tab].blocks;
    const auto found = std::ranges::find(blocks, id, &PromptBlock::id);
    if (found == blocks.end())
        return std::nullopt;
    m_lastPosition = { id, *tab, static_cast<std::size_t>(found - blocks.begin()) };
    return m_lastPosition;
}

template <typename Change>
void SatchelStore::editBlock(QUuid id, Change &&change)
{
    const auto position = locate(id);
    if (!position)
        return;
    m_tabs.edit([&position, &change](auto &tabs) {
        std::forward<Change>(change)(tabs[position->tab].blocks[position->block]);
    });
    scheduleSave();
}
