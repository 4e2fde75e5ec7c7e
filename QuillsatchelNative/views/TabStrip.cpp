#include "views/TabStrip.h"

#include "views/Painting.h"
#include "views/SatchelTheme.h"
#include "views/SymbolButton.h"
#include "views/TabChip.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QScrollArea>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <iterator>
#include <utility>

namespace
{

using namespace Qt::StringLiterals;

constexpr int HorizontalPadding = 9;
constexpr int Spacing = 4;
constexpr QSize NewTabButtonSize(24, 24);
constexpr int NewTabSymbolSize = 16;

} // namespace

TabStrip::TabStrip(const SatchelStore &store, MainQueue &mainQueue, QWidget *parent)
    : QWidget(parent)
    , m_store(store)
    , m_mainQueue(mainQueue)
    , m_scheduler(mainQueue, [this] { render(); })
    , m_scrollArea(new QScrollArea(this))
    , m_row(new QWidget)
    , m_newTabButton(new SymbolButton(u"plus"_s, NewTabSymbolSize, SatchelTheme::secondary, this))
{
    makeRow();
    m_newTabButton->setFixedSize(NewTabButtonSize);
    m_newTabButton->setLabel(tr("New tab"));
    connect(m_newTabButton, &QAbstractButton::clicked, this, [this] {
        endEditing();
        onAdd();
    });
    connect(qApp, &QApplication::focusChanged, this, &TabStrip::followFocus);
    connect(m_scrollArea->horizontalScrollBar(), &QScrollBar::valueChanged, this,
            &TabStrip::revealEditedChip);
    m_scheduler.observe(store);
    render();
}

void TabStrip::makeRow()
{
    m_scrollArea->setFrameShape(QFrame::NoFrame);
    m_scrollArea->setFocusPolicy(Qt::NoFocus);
    m_scrollArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scrollArea->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scrollArea->viewport()->setAutoFillBackground(false);
    m_scrollArea->setWidget(m_row);
    m_row->setAutoFillBackground(false);

    auto *const layout = new QHBoxLayout;
    layout->setContentsMargins(HorizontalPadding, 0, HorizontalPadding, 0);
    layout->setSpacing(Spacing);
    layout->addWidget(m_scrollArea);
    layout->addWidget(m_newTabButton);
    setLayout(layout);
}

QSize TabStrip::sizeHint() const
{
    const QMargins margins = contentsMargins();
    return { 0, Height + margins.top() + margins.bottom() };
}

void TabStrip::render()
{
    const auto *const earlier = focusedChip();
    const auto index = std::ranges::find(m_chips, earlier) - m_chips.begin();
    renderChips();
    layOutChips();
    if (m_editingTabID && !chipOf(m_editingTabID))
        endEditing(); // the tab was deleted
    const bool isNew = revealActiveChip();
    revealEditedChip();
    if (const auto *const from = earlier ? earlier : focusedChip())
        keepFocus(static_cast<std::size_t>(index), isNew, from->focusReason());
}

void TabStrip::renderChips()
{
    std::vector<TabChip *> spare = std::exchange(m_chips, {});
    std::ranges::reverse(spare);
    const auto &tabs = m_store.tabs().get();
    m_chips.reserve(tabs.size());
    for (const auto &tab : tabs) {
        auto *const chip = takeChip(tab.id, spare);
        chip->render(tab, m_store.activeTabID().get() == tab.id, m_editingTabID == tab.id,
                     tabs.size() > 1);
        m_chips.push_back(chip);
    }
    std::ranges::for_each(spare, [this](TabChip *chip) { removeChip(chip); });
}

// Takes the focus from the chip first: Qt would pass it to the next widget of its focus chain,
// which may be far away.
void TabStrip::removeChip(TabChip *chip)
{
    auto *const focus = window()->focusWidget();
    if (chip == focus || chip->isAncestorOf(focus))
        window()->setFocus();
    chip->hide();
    chip->deleteLater();
}

// Matches chips with tabs by id, so that a tab being renamed keeps its cursor. `spare` is in
// reverse order: usually no tab has moved, and the chip is the last one.
TabChip *TabStrip::takeChip(const QUuid &id, std::vector<TabChip *> &spare)
{
    const auto found = std::find_if(spare.rbegin(), spare.rend(),
                                    [&id](const TabChip *chip) { return chip->tabID() == id; });
    if (found == spare.rend())
        return makeChip();
    auto *const chip = *found;
    spare.erase(std::next(found).base());
    return chip;
}

TabChip *TabStrip::makeChip()
{
    auto *const chip = new TabChip(m_row);
    chip->onSelect = [this, chip] {
        endEditing();
        onSelect(chip->tabID());
    };
    chip->onRename = [this, chip] {
        onSelect(chip->tabID());
        beginEditing(chip->tabID());
    };
    chip->onDelete = [this, chip] { onDelete(chip->tabID()); };
    chip->onName = [this, chip](const std::string &name) { onRename(chip->tabID(), name); };
    chip->show();
    return chip;
}

void TabStrip::layOutChips()
{
    int left = 0;
    for (auto *const chip : m_chips) {
        chip->move(left, (Height - chip->height()) / 2);
        left += chip->width() + Spacing;
    }
    m_row->resize(std::max(left - Spacing, 0), Height);
}

// Scrolls only when another tab becomes active, so that the row otherwise stays where the user left
// it. False if the active tab is the same as before.
bool TabStrip::revealActiveChip()
{
    if (std::exchange(m_revealedTabID, m_store.activeTabID().get()) == m_store.activeTabID().get())
        return false;
    if (auto *const active = activeChip())
        m_scrollArea->ensureWidgetVisible(active, 0, 0);
    return true;
}

// Called after every scroll and resize, so that the edited field stays visible.
void TabStrip::revealEditedChip()
{
    if (auto *const edited = chipOf(m_editingTabID))
        m_scrollArea->ensureWidgetVisible(edited, 0, 0);
}

// If a chip has the focus, moves it to the newly active chip, or from a deleted chip to the chip
// now at its place.
void TabStrip::keepFocus(std::size_t index, bool isAnotherActive, Qt::FocusReason reason)
{
    auto *chip = focusedChip();
    if (isAnotherActive)
        chip = activeChip();
    else if (!chip && !m_chips.empty())
        chip = m_chips[std::min(index, m_chips.size() - 1)];
    if (chip)
        chip->setFocus(reason);
}

TabChip *TabStrip::chipOf(const std::optional<QUuid> &id) const
{
    const auto found =
        std::ranges::find_if(m_chips, [&id](const TabChip *chip) { return chip->tabID() == id; });
    return found == m_chips.end() ? nullptr : *found;
}

TabChip *TabStrip::activeChip() const
{
    const auto found =
        std::ranges::find_if(m_chips, [](const TabChip *chip) { return chip->isChecked(); });
    return found == m_chips.end() ? nullptr : *found;
}

// The window keeps its focus widget while another window is active.
TabChip *TabStrip::focusedChip() const
{
    const auto found = std::ranges::find(m_chips, window()->focusWidget());
    return found == m_chips.end() ? nullptr : *found;
}

void TabStrip::beginEditing(const QUuid &id)
{
    m_editingTabID = id;
    m_focusedTabID.reset();
    qApp->installEventFilter(this);
    m_scheduler.schedule();
    // The next render creates the field.
    m_mainQueue.async([strip = QPointer(this), id] {
        if (strip)
            strip->focusField(id);
    });
}

void TabStrip::focusField(const QUuid &id)
{
    auto *const chip = chipOf(id);
    if (chip && chip->focusField())
        m_focusedTabID = id;
}

// Uses the window's focus widget, which stays the same while a menu or another window has the
// focus.
void TabStrip::followFocus()
{
    const auto *const chip = chipOf(m_focusedTabID);
    if (chip && !chip->isFieldFocused())
        endEditing();
}

// Watches presses too, because pressed buttons do not take the focus. Ignores presses while a menu
// is open, because it may be the field's menu. Looks for the child at the place, because in Qt 6.11
// a field passes a right press on to its parents.
bool TabStrip::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() != QEvent::MouseButtonPress || QApplication::activePopupWidget())
        return false;
    const auto *const pressed = qobject_cast<QWidget *>(object);
    const auto *const edited = chipOf(m_editingTabID);
    if (!pressed || !edited)
        return false;
    const auto *const child =
        pressed->childAt(static_cast<QMouseEvent *>(event)->position().toPoint());
    if (!edited->isInField(child ? *child : *pressed))
        endEditing();
    return false;
}

void TabStrip::endEditing()
{
    m_editingTabID.reset();
    m_focusedTabID.reset();
    qApp->removeEventFilter(this);
    m_scheduler.schedule();
}

QList<QWidget *> TabStrip::focusStops() const
{
    QList<QWidget *> stops(m_chips.begin(), m_chips.end());
    stops.append(m_newTabButton);
    return stops;
}

void TabStrip::revealFocus()
{
    if (auto *const focused = focusedChip())
        m_scrollArea->ensureWidgetVisible(focused, 0, 0);
}

void TabStrip::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.fillRect(rect(), Painting::qColor(SrgbColor::black(0.08)));
}

void TabStrip::resizeEvent(QResizeEvent * /*event*/)
{
    revealEditedChip();
}

void TabStrip::wheelEvent(QWheelEvent *event)
{
    const QPoint delta = event->angleDelta();
    auto *const bar = m_scrollArea->horizontalScrollBar();
    bar->setValue(bar->value() - (delta.x() != 0 ? delta.x() : delta.y()) / 2);
    event->accept();
}
