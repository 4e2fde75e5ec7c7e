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

/// Owns the prompt library while the program runs. The constructor reads `prompts.json`; the store
/// writes it 0.25 seconds after the last change. Main thread only.
///
/// No operation reports failure. Node operations without the id of a tab act on the active tab
/// only. They ignore unknown ids and nodes of other tabs. Changes stay in memory while the file
/// cannot be written. Ids are passed by value, so that an id read from the tab or node being
/// deleted stays valid.
class SatchelStore final : public ObservableObject
{
public:
    /// Prepares the folder and loads the library; writes no file. Stops the process if the machine
    /// has no folder for user data.
    explicit SatchelStore(Platform &platform);

    /// Never empty, unless all tabs had the same id and were deleted together.
    const Published<std::vector<PromptTab>> &tabs() const { return m_tabs; }

    /// May match no tab; `activeTab` then returns the first.
    const Published<std::optional<QUuid>> &activeTabID() const { return m_activeTabID; }

    /// The node that was copied in the last 1.4 seconds. It may be deleted already.
    const Published<std::optional<QUuid>> &copiedBlockID() const { return m_copiedBlockID; }

    /// The first tab with the active id, otherwise the first tab; none without tabs.
    std::optional<std::size_t> activeTabIndex() const;
    /// The tab at `activeTabIndex`, or null. Valid until the next change.
    const PromptTab *activeTab() const;

    /// The first tab with this id, or null. Valid until the next change.
    const PromptTab *tab(QUuid id) const;
    /// The node with this id in the tab `tabID`, which need not be active; null if it does not
    /// exist. Valid until the next change.
    const PromptBlock *block(QUuid tabID, QUuid id) const;
    /// The node with this id in the active tab, where the operations on nodes act; null if that tab
    /// does not have it. Valid until the next change.
    const PromptBlock *activeBlock(QUuid id) const;

    /// Appends an empty tab "New Tab" and makes it active.
    void addTab();
    /// Stores the name unchanged, even if it is empty.
    void renameTab(QUuid id, std::string name);
    /// Keeps the last tab. Deleting the active tab makes the first one active.
    void deleteTab(QUuid id);
    /// Does not check that the tab exists.
    void selectTab(QUuid id);

    /// Appends an empty node.
    void addBlock();
    /// Cannot be undone.
    void deleteBlock(QUuid id);
    /// Replaces the node's whole text with `text`, unchanged. It must be valid UTF-8.
    void updateBlock(QUuid id, std::string text);
    void setBlockColor(QUuid id, BlockColor color);
    /// Moves the node by `offset` places, down if positive, but not past the ends of the list.
    /// Stops the process if index plus offset overflows.
    void moveBlock(QUuid id, std::ptrdiff_t offset);
    /// Copies the node's text to the clipboard and marks the node as copied.
    void copyBlock(QUuid id);
    /// As `copyBlock(id)`, but in the tab `tabID`, which need not be active.
    void copyBlock(QUuid tabID, QUuid id);
    /// Replaces the node's text with the clipboard's, if that has text.
    void pasteIntoBlock(QUuid id);
    /// Opens the node's text in the browser if, after trimming, it is an http or https address.
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

    void copy(const PromptBlock &block);
    std::optional<Position> locate(QUuid id) const;
    template <typename Change>
    void editBlock(QUuid id, Change &&change);

    Platform &m_platform;
    Published<std::vector<PromptTab>> m_tabs { this };
    Published<std::optional<QUuid>> m_activeTabID { this };
    Published<std::optional<QUuid>> m_copiedBlockID { this };
    DocumentFile m_file;
    WorkItem m_saveWorkItem;
    // Where the last node was found, so that the cost of typing does not depend on the size of the
    // library. Reset inside each change that moves nodes, not before it, because observers may look
    // up a node when the change is announced.
    mutable std::optional<Position> m_lastPosition;
};
