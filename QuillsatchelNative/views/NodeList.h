#pragma once

#include "library/PromptBlock.h"
#include "library/TextRange.h"
#include "platform/MainQueue.h"
#include "views/RowLayout.h"

#include <QWidget>

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

class EmptyState;
class OverlayScrollBar;
class PromptCard;

/// A scrolling list of nodes.
///
/// Cards exist only for the visible nodes and for one screenful above and below them. Visible cards
/// are created immediately, the others one at a time once the visible ones have been painted. A
/// card that has the focus, is being dragged or receives dictation keeps its node however far the
/// list is scrolled; all others are reused for other nodes.
class NodeList final : public QWidget
{
    Q_OBJECT

public:
    /// What the list shows. Valid until the library changes.
    struct Content {
        /// Of the tab. A different one scrolls to the top; without one the list shows nothing.
        std::optional<QUuid> id;
        std::size_t count = 0;
        std::function<const PromptBlock &(std::size_t row)> node {};
        std::optional<QUuid> copiedID {};   ///< the node marked as copied
        std::optional<QUuid> dictatedID {}; ///< the node that receives dictation
    };

    /// `content` is called whenever the list needs its nodes, even between calls of `render`.
    /// `wireCard` connects the callbacks of a new card; they read the card's `blockID` when called.
    NodeList(MainQueue &mainQueue, std::function<Content()> content,
             std::function<void(PromptCard &)> wireCard, QWidget *parent);

    /// Updates the cards from the content.
    void render();
    /// Scrolls to the last node and focuses its editor.
    void editLastNode();
    /// Scrolls to the node, if the list shows it.
    void reveal(const QUuid &id);
    /// Scrolls to the node, if the list shows it, focuses its editor and selects `range` there.
    void edit(const QUuid &id, const TextRange &range);
    /// Scrolls to the card with the keyboard focus, if there is one.
    void revealFocus();
    /// The node whose card contains the window's focused widget.
    std::optional<QUuid> focusedNode() const;
    /// The widgets that Tab visits, in order.
    QList<QWidget *> focusStops() const;

protected:
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    using Row = RowLayout::Row;
    using Rows = RowLayout::Rows;

    /// A card and its row; no row while the card waits to be reused.
    struct Slot {
        PromptCard *card;
        std::optional<Row> row;
    };

    RowLayout layOut() const;
    QRect cardGeometry(Row row) const;

    void renderEmptyState();
    void updateScrollRange();
    void placeCards();
    bool moveCards();
    std::optional<Row> followRows(const Rows &nearby);
    std::optional<Row> findRow(const Slot &slot, const Rows &nearby) const;
    void showRow(Row row);
    void orderCards();
    void renderSlot(Slot &slot);
    void prepareNearbyLater();
    void prepareNearby();

    std::vector<Slot> shownSlots() const;
    Slot *slotAt(Row row);
    Slot &freeSlot();
    bool hasFocusIn(const Slot &slot) const;
    bool isPinned(const Slot &slot) const;
    bool releaseFocus(const Slot &slot);
    void focusRow(Row row);
    std::optional<Row> rowOf(const QUuid &id) const;
    void reveal(Row row);

    MainQueue &m_mainQueue;
    std::function<Content()> m_content;
    std::function<void(PromptCard &)> m_wireCard;
    OverlayScrollBar *m_scrollBar;
    EmptyState *m_emptyState = nullptr;
    std::vector<Slot> m_slots;
    std::optional<QUuid> m_shownID;
    bool m_isPreparing = true; // until the first paint, which must not wait for nearby cards
};
