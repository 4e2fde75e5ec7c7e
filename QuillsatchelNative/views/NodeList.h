#pragma once

#include "dictation/DictationController.h"
#include "library/SatchelStore.h"
#include "views/RowLayout.h"

#include <QWidget>

#include <functional>
#include <optional>
#include <vector>

class EmptyState;
class OverlayScrollBar;
class PromptCard;

/// The scrolling list of the active tab's nodes.
///
/// Only the cards in sight and one screen around exist, whatever the tab holds: those in sight are
/// made at once, the others one at a time a little later. The card with the focus, under drag or
/// under dictation keeps its node wherever the list is scrolled; all others are used again for
/// other nodes.
class NodeList final : public QWidget
{
    Q_OBJECT

public:
    /// `wireCard` connects a new card's callbacks, which go by the card's `blockID` at the time.
    NodeList(const SatchelStore &store, const DictationController &dictation, MainQueue &mainQueue,
             std::function<void(PromptCard &)> wireCard, QWidget *parent);

    /// Brings the cards in line with the models.
    void render();
    /// Scrolls the last node into sight and lets the user type into it.
    void editLastNode();
    /// Scrolls the card with the keyboard focus into sight, if there is one.
    void revealFocus();
    /// What Tab visits here, in its order.
    QList<QWidget *> focusStops() const;

protected:
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    using Row = RowLayout::Row;
    using Rows = RowLayout::Rows;

    /// A card and the row it stands in; no row while it waits to be used again.
    struct Slot {
        PromptCard *card;
        std::optional<Row> row;
    };

    const std::vector<PromptBlock> &blocks() const;
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
    void reveal(Row row);

    const SatchelStore &m_store;
    const DictationController &m_dictation;
    MainQueue &m_mainQueue;
    std::function<void(PromptCard &)> m_wireCard;
    OverlayScrollBar *m_scrollBar;
    EmptyState *m_emptyState = nullptr;
    std::vector<Slot> m_slots;
    std::optional<QUuid> m_shownTabID;
    bool m_isPreparing = false;
};
