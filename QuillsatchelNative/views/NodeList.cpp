#include "views/NodeList.h"

#include "views/EmptyState.h"
#include "views/FirstPaint.h"
#include "views/FocusOrder.h"
#include "views/Hover.h"
#include "views/NodeEditor.h"
#include "views/OverlayScrollBar.h"
#include "views/PromptCard.h"

#include <QApplication>
#include <QPointer>
#include <QWheelEvent>

#include <algorithm>
#include <chrono>
#include <iterator>
#include <ranges>
#include <utility>

namespace
{

constexpr std::chrono::milliseconds PreparationDelay(20); // frames and key events come first

} // namespace

NodeList::NodeList(MainQueue &mainQueue, std::function<Content()> content,
                   std::function<void(PromptCard &)> wireCard, QWidget *parent)
    : QWidget(parent)
    , m_mainQueue(mainQueue)
    , m_content(std::move(content))
    , m_wireCard(std::move(wireCard))
    , m_scrollBar(new OverlayScrollBar(Qt::Vertical, this))
{
    m_scrollBar->setSingleStep(OverlayScrollBar::LineStep);
    connect(m_scrollBar, &QScrollBar::valueChanged, this, &NodeList::placeCards);
    afterFirstPaint(*this, m_mainQueue, [this] {
        m_isPreparing = false;
        prepareNearbyLater();
    });
}

void NodeList::render()
{
    const auto id = m_content().id;
    if (std::exchange(m_shownID, id) != id) {
        std::ranges::for_each(m_slots, [this](const Slot &slot) { releaseFocus(slot); });
        m_scrollBar->setValue(0);
    }
    renderEmptyState();
    updateScrollRange();
    if (!isVisible())
        return; // a hidden list updates its cards in showEvent
    placeCards();
    for (auto &slot : m_slots) {
        if (slot.row)
            renderSlot(slot);
    }
}

void NodeList::renderEmptyState()
{
    const auto content = m_content();
    const bool isEmpty = content.id && content.count == 0;
    if (isEmpty && !m_emptyState)
        m_emptyState = new EmptyState(this);
    if (!m_emptyState)
        return;
    m_emptyState->setGeometry(RowLayout::Padding, RowLayout::Padding,
                              width() - 2 * RowLayout::Padding, m_emptyState->sizeHint().height());
    m_emptyState->setVisible(isEmpty);
}

void NodeList::updateScrollRange()
{
    m_scrollBar->setPageStep(height());
    m_scrollBar->setRange(0, layOut().scrollRange());
}

RowLayout NodeList::layOut() const
{
    return { m_content().count, PromptCard::cardHeight(), height(), m_scrollBar->value() };
}

QRect NodeList::cardGeometry(Row row) const
{
    return { RowLayout::Padding, layOut().topOf(row), width() - 2 * RowLayout::Padding,
             PromptCard::cardHeight() };
}

void NodeList::placeCards()
{
    if (!isVisible())
        return; // the size may still change, and texts would be laid out twice
    const auto lostFocusRow = followRows(layOut().nearbyRows());
    const Rows inSight = layOut().visibleRows();
    for (Row row = inSight.first; row < inSight.end; ++row)
        showRow(row);
    const bool haveMoved = moveCards();
    orderCards();
    if (lostFocusRow)
        focusRow(*lostFocusRow);
    if (haveMoved)
        Hover::update(*this);
    prepareNearbyLater();
}

/// Moves each card to its row. False if no card had to move.
bool NodeList::moveCards()
{
    bool haveMoved = false;
    for (auto &slot : m_slots) {
        if (!slot.row || slot.card->geometry() == cardGeometry(*slot.row))
            continue;
        slot.card->setGeometry(cardGeometry(*slot.row));
        haveMoved = true;
    }
    return haveMoved;
}

// Matches cards with nodes by id, so that a focused editor keeps its cursor and undo history when
// the list changes around it. Returns the row of a card that had the focus and whose node is gone.
std::optional<NodeList::Row> NodeList::followRows(const Rows &nearby)
{
    std::vector<std::optional<Row>> rows(m_slots.size());
    std::ranges::transform(m_slots, rows.begin(), [this, &nearby](const Slot &slot) {
        return slot.row ? findRow(slot, nearby) : std::nullopt;
    });
    const auto earlier = m_slots;
    std::optional<Row> lostFocusRow;
    for (auto &slot : m_slots)
        slot.row.reset();
    for (std::size_t index = 0; index < m_slots.size(); ++index) {
        auto &slot = m_slots[index];
        if (!rows[index] || slotAt(*rows[index])) {
            if (releaseFocus(slot))
                lostFocusRow = earlier[index].row;
            slot.card->hide();
            continue;
        }
        slot.row = rows[index];
        if (slot.row != earlier[index].row)
            renderSlot(slot); // nodes with the same id may differ
    }
    return lostFocusRow;
}

std::optional<NodeList::Row> NodeList::findRow(const Slot &slot, const Rows &nearby) const
{
    const auto content = m_content();
    const auto count = static_cast<Row>(content.count);
    const auto isAt = [&content, count, id = slot.card->blockID()](Row row) {
        return row < count && content.node(static_cast<std::size_t>(row)).id == id;
    };
    const bool pinned = isPinned(slot);
    if (isAt(*slot.row) && (pinned || nearby.contains(*slot.row)))
        return slot.row;
    for (const Rows &rows : { nearby, pinned ? Rows { 0, count } : Rows() }) {
        for (Row row = rows.first; row < rows.end; ++row) {
            if (isAt(row))
                return row;
        }
    }
    return std::nullopt;
}

void NodeList::showRow(Row row)
{
    if (slotAt(row))
        return;
    auto &slot = freeSlot();
    slot.row = row;
    slot.card->setGeometry(cardGeometry(row));
    slot.card->show();
    renderSlot(slot);
}

// The accessibility tree lists children in stacking order. Cards never overlap, so the stacking
// order can follow the rows. Cards that are in order already are not restacked.
void NodeList::orderCards()
{
    QWidget *next = m_scrollBar;
    for (const auto &slot : shownSlots() | std::views::reverse) {
        slot.card->stackUnder(next);
        next = slot.card;
    }
}

void NodeList::renderSlot(Slot &slot)
{
    const auto content = m_content();
    const auto &block = content.node(static_cast<std::size_t>(*slot.row));
    const QString name = tr("Node %1 of %2").arg(*slot.row + 1).arg(content.count);
    if (slot.card->accessibleName() != name) // Qt announces even an unchanged name
        slot.card->setAccessibleName(name);
    slot.card->render(block, content.copiedID == block.id, content.dictatedID == block.id);
}

void NodeList::prepareNearbyLater()
{
    const Rows nearby = layOut().nearbyRows();
    Row row = nearby.first;
    while (row < nearby.end && slotAt(row))
        ++row;
    if (row == nearby.end || std::exchange(m_isPreparing, true))
        return;
    m_mainQueue.asyncAfter(PreparationDelay, [list = QPointer(this)] {
        if (list)
            list->prepareNearby();
    });
}

void NodeList::prepareNearby()
{
    m_isPreparing = false;
    const Rows nearby = layOut().nearbyRows();
    for (Row row = nearby.first; row < nearby.end; ++row) {
        if (slotAt(row))
            continue;
        showRow(row);
        orderCards();
        break;
    }
    prepareNearbyLater();
}

NodeList::Slot *NodeList::slotAt(Row row)
{
    const auto found = std::ranges::find(m_slots, std::optional(row), &Slot::row);
    return found == m_slots.end() ? nullptr : &*found;
}

NodeList::Slot &NodeList::freeSlot()
{
    const auto found = std::ranges::find(m_slots, std::optional<Row>(), &Slot::row);
    if (found != m_slots.end())
        return *found;
    auto *const card = new PromptCard(this);
    m_wireCard(*card);
    return m_slots.emplace_back(Slot { card, std::nullopt });
}

bool NodeList::hasFocusIn(const Slot &slot) const
{
    // The window keeps its focus widget while another window is active.
    return slot.card->isAncestorOf(window()->focusWidget());
}

bool NodeList::isPinned(const Slot &slot) const
{
    return slot.card->dragTranslation() != 0 || hasFocusIn(slot) ||
           m_content().dictatedID == slot.card->blockID();
}

// Called before a card is hidden: Qt would pass the focus to the next widget of its focus chain,
// and the panel would scroll there. True if a neighbouring card may take the focus; false after
// typing, because the next letters would end up in another node.
bool NodeList::releaseFocus(const Slot &slot)
{
    if (!hasFocusIn(slot))
        return false;
    const bool wasTyping = qobject_cast<NodeEditor *>(window()->focusWidget());
    window()->setFocus();
    return !wasTyping;
}

void NodeList::focusRow(Row row)
{
    const auto *const slot = slotAt(std::min(row, static_cast<Row>(m_content().count) - 1));
    if (slot)
        FocusOrder::stopsIn(*slot->card).front()->setFocus(Qt::TabFocusReason);
}

/// The slots with a row, top to bottom.
std::vector<NodeList::Slot> NodeList::shownSlots() const
{
    std::vector<Slot> shown;
    std::ranges::copy_if(m_slots, std::back_inserter(shown),
                         [](const Slot &slot) { return slot.row.has_value(); });
    std::ranges::sort(shown, {}, &Slot::row);
    return shown;
}

QList<QWidget *> NodeList::focusStops() const
{
    QList<QWidget *> stops;
    for (const auto &slot : shownSlots())
        stops += FocusOrder::stopsIn(*slot.card);
    return stops;
}

std::optional<QUuid> NodeList::focusedNode() const
{
    const auto found = std::ranges::find_if(
        m_slots, [this](const Slot &slot) { return slot.row && hasFocusIn(slot); });
    return found == m_slots.end() ? std::nullopt : std::optional(found->card->blockID());
}

void NodeList::editLastNode()
{
    const auto last = static_cast<Row>(m_content().count) - 1;
    if (last < 0)
        return;
    reveal(last);
    if (auto *const slot = slotAt(last))
        slot->card->focusEditor();
}

std::optional<NodeList::Row> NodeList::rowOf(const QUuid &id) const
{
    const auto content = m_content();
    for (std::size_t row = 0; row < content.count; ++row) {
        if (content.node(row).id == id)
            return static_cast<Row>(row);
    }
    return std::nullopt;
}

void NodeList::reveal(const QUuid &id)
{
    if (const auto row = rowOf(id))
        reveal(*row);
}

void NodeList::edit(const QUuid &id, const TextRange &range)
{
    const auto row = rowOf(id);
    if (!row)
        return;
    reveal(*row);
    const auto *const slot = slotAt(*row);
    if (!slot)
        return;
    slot->card->focusEditor();
    slot->card->select(range);
}

void NodeList::revealFocus()
{
    const auto *const focus = QApplication::focusWidget();
    const auto found = std::ranges::find_if(
        m_slots, [focus](const Slot &slot) { return slot.row && slot.card->isAncestorOf(focus); });
    if (found == m_slots.end())
        return;
    const Row row = *found->row;
    reveal(row);
    // Tab may move to a neighbour before `prepareNearby` has created it.
    if (row > 0)
        showRow(row - 1);
    if (row + 1 < static_cast<Row>(m_content().count))
        showRow(row + 1);
    orderCards();
}

void NodeList::reveal(Row row)
{
    m_scrollBar->setValue(layOut().offsetToReveal(row));
}

void NodeList::showEvent(QShowEvent * /*event*/)
{
    render();
}

void NodeList::resizeEvent(QResizeEvent * /*event*/)
{
    constexpr int Inset = 4; // keeps clear of the window's resize border
    m_scrollBar->setGeometry(width() - OverlayScrollBar::Thickness - Inset, 2,
                             OverlayScrollBar::Thickness, height() - 4);
    renderEmptyState();
    updateScrollRange();
    placeCards();
}

void NodeList::wheelEvent(QWheelEvent *event)
{
    QApplication::sendEvent(m_scrollBar, event);
}
