#pragma once

#include "library/PromptTab.h"
#include "platform/Platform.h"
#include "support/DocumentFile.h"
#include "support/Published.h"

#include <QUuid>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

/// The one owner of the prompt library while the program runs: it reads `prompts.json` when it is
/// made, changes the library, and writes the file 0.25 seconds after the last change. Main thread
/// only.
///
/// No operation reports failure. Node operations act on the active tab only; a node of another
/// tab, an unknown id, a file that cannot be written end in silence with nothing changed. Ids are
/// taken by value, so that one read from the very tab or node that goes stays what it was.
class SatchelStore final : public ObservableObject
{
public:
    /// Prepares the folder and loads the library; writes no file. Stops the process if the
    /// machine has no place for a user's data.
    explicit SatchelStore(Platform &platform);

    /// Empty only once tabs that all had one id were deleted: the last tab stays otherwise.
    const Published<std::vector<PromptTab>> &tabs() const { return m_tabs; }

    /// May name no tab; `activeTab` then gives the first.
    const Published<std::optional<QUuid>> &activeTabID() const { return m_activeTabID; }

    /// The node copied last, for 1.4 seconds. It may no longer exist.
    const Published<std::optional<QUuid>> &copiedBlockID() const { return m_copiedBlockID; }

    /// The first tab with the active id, otherwise the first of all; none without any tab.
    std::optional<std::size_t> activeTabIndex() const;
    /// As `activeTabIndex`; it points into `tabs` and is good until the next change.
    const PromptTab *activeTab() const;

    /// The node with this id in any tab, the active one first; null if no tab has it. Valid until
    /// the next change.
    const PromptBlock *block(QUuid id) const;
    /// The node with this id in the active tab, where the operations on nodes act; null if that tab
    /// does not have it. Valid until the next change.
    const PromptBlock *activeBlock(QUuid id) const;
    /// Calls `visit(tab, block)` for every node of every tab, in their order.
    template <typename Visit>
    void forEachBlock(Visit &&visit) const;

    /// Appends an empty tab "New Tab" and makes it active.
    void addTab();
    /// Takes the name as it is, also an empty one.
    void renameTab(QUuid id, std::string name);
    /// The last tab stays. If the active one goes, the first becomes active.
    void deleteTab(QUuid id);
    /// Does not ask whether there is such a tab.
    void selectTab(QUuid id);

    /// Appends an empty node.
    void addBlock();
    /// At once, without undo.
    void deleteBlock(QUuid id);
    /// Replaces the node's whole text by this one, valid UTF-8, as it is.
    void updateBlock(QUuid id, std::string text);
    void setBlockColor(QUuid id, BlockColor color);
    /// Moves the node by so many places, down if positive, as far as the list goes. Stops the
    /// process if the sum overflows.
    void moveBlock(QUuid id, std::ptrdiff_t offset);
    /// Puts the node's text on the clipboard and marks the node as copied.
    void copyBlock(QUuid id);
    /// The clipboard's text takes the place of the node's; without text there nothing happens.
    void pasteIntoBlock(QUuid id);
    /// Opens the node's text if it is, white space around it aside, an http or https address.
    void openBlockURL(QUuid id);

private:
    struct Position {
        QUuid id;
        std::size_t tab;
        std::size_t block;
    };

    void load();
    bool loadFile();
    void scheduleSave();
    void saveNow();

    std::optional<Position> locate(QUuid id) const;
    template <typename Change>
    void editBlock(QUuid id, Change &&change);

    Platform &m_platform;
    Published<std::vector<PromptTab>> m_tabs { this };
    Published<std::optional<QUuid>> m_activeTabID { this };
    Published<std::optional<QUuid>> m_copiedBlockID { this };
    DocumentFile m_file;
    WorkItem m_saveWorkItem;
    // Where the last node was found, so that typing costs the same in a library of any size.
    // Forgotten within each change that moves nodes, not before: observers may look something up
    // when the change is announced.
    mutable std::optional<Position> m_lastPosition;
};

template <typename Visit>
void SatchelStore::forEachBlock(Visit &&visit) const
{
    for (const auto &tab : m_tabs.get()) {
        for (const auto &block : tab.blocks)
            visit(tab, block);
    }
}
