#include "views/ChoiceList.h"

#include "views/OverlayScrollBar.h"
#include "views/Painting.h"
#include "views/SatchelTheme.h"

#include <QAccessible>
#include <QPainter>

namespace
{

constexpr int Radius = 8;
constexpr int RowRadius = 6;
constexpr int Padding = 4;
constexpr int BarInset = 2;

} // namespace

ChoiceList::ChoiceList(QWidget *parent)
    : QListView(parent)
{
    setFrameStyle(Box | Plain); // not painted, but keeps the scroll bar off the edge
    setLineWidth(BarInset);
    setVerticalScrollBar(new OverlayScrollBar(Qt::Vertical, this));
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(ScrollPerPixel);
    setUniformItemSizes(true);
    setEditTriggers(NoEditTriggers);
    setFocusPolicy(Qt::TabFocus); // a click leaves the focus in the search field
    viewport()->setAttribute(Qt::WA_Hover);
}

void ChoiceList::paintRowBackground(QPainter &painter, const QStyleOptionViewItem &option)
{
    if (option.state.testFlag(QStyle::State_Selected))
        Painting::fillRoundedRect(painter, option.rect, RowRadius,
                                  SatchelTheme::accent.withOpacity(0.75));
    else if (option.state.testFlag(QStyle::State_MouseOver))
        Painting::fillRoundedRect(painter, option.rect, RowRadius, SrgbColor::white(0.07));
    if (option.state.testFlag(QStyle::State_HasFocus))
        Painting::focusRing(painter, option.rect, RowRadius);
}

void ChoiceList::updateGeometries()
{
    QListView::updateGeometries();
    const int around = Padding - BarInset;
    const bool isScrollable = verticalScrollBar()->maximum() > 0;
    const QMargins margins(around, around,
                           around + (isScrollable ? verticalScrollBar()->width() : 0), around);
    if (viewportMargins() != margins)
        setViewportMargins(margins);
}

std::optional<ChoiceList::CursorAction> ChoiceList::actionOf(int key)
{
    switch (key) {
    case Qt::Key_Up:
        return MoveUp;
    case Qt::Key_Down:
        return MoveDown;
    case Qt::Key_PageUp:
        return MovePageUp;
    case Qt::Key_PageDown:
        return MovePageDown;
    default:
        return std::nullopt;
    }
}

bool ChoiceList::moveSelection(int key)
{
    const auto action = actionOf(key);
    if (action)
        move(*action);
    return action.has_value();
}

void ChoiceList::selectFirst()
{
    move(MoveHome);
}

void ChoiceList::move(CursorAction action)
{
    const QModelIndex next = moveCursor(action, {});
    if (next.isValid())
        setCurrentIndex(next);
}

void ChoiceList::setNote(const QString &note)
{
    if (m_note == note)
        return;
    m_note = note;
    setAccessibleDescription(note);
    viewport()->update();
}

bool ChoiceList::event(QEvent *event)
{
    if (event->type() != QEvent::Paint)
        return QListView::event(event);
    paintBackground();
    return true;
}

void ChoiceList::paintBackground()
{
    QPainter painter(this);
    Painting::fillRoundedRect(painter, rect(), Radius, SrgbColor::black(0.3));
    if (hasFocus() && !currentIndex().isValid())
        Painting::focusRing(painter, rect(), Radius);
    else
        Painting::strokeRoundedRect(painter, rect(), Radius, SatchelTheme::border);
}

void ChoiceList::paintEvent(QPaintEvent *event)
{
    QListView::paintEvent(event);
    QPainter painter(viewport());
    painter.setFont(Painting::systemFont(12));
    painter.setPen(Painting::qColor(SatchelTheme::secondary));
    painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap, m_note);
}

void ChoiceList::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QListView::currentChanged(current, previous);
    if (hasFocus() || !current.isValid())
        return;
    // Later versions of Qt than 6.4 announce the row only while the list has the focus.
    QAccessibleEvent event(this, QAccessible::Focus);
    event.setChild(current.row());
    QAccessible::updateAccessibility(&event);
}
