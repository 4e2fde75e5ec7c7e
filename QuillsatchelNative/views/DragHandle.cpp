#include "views/DragHandle.h"

#include "views/AccessibleRole.h"
#include "views/Painting.h"
#include "views/SatchelTheme.h"
#include "views/Symbol.h"
#include "views/SymbolView.h"

#include <QAction>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <cmath>
#include <utility>

namespace
{

using namespace Qt::StringLiterals;

constexpr QSize FrameSize(44, 24);
constexpr QSize GlyphSize(24, 9);
constexpr qreal MinimumDistance = 4;
constexpr auto GlyphSymbol = "line.3.horizontal"_L1;

/// Removes rounding errors. Positions are pixels divided by the scale, so 36 pixels at scale 1.5
/// could be less than 24 points.
qreal exact(qreal points)
{
    constexpr qreal StepsPerPoint = 4096;
    return std::round(points * StepsPerPoint) / StepsPerPoint;
}

QPoint glyphPlace()
{
    return { 0, (FrameSize.height() - GlyphSize.height()) / 2 };
}

} // namespace

DragHandle::DragHandle(QWidget *parent)
    : QWidget(parent)
{
    setAccessibleRole(*this, QAccessible::Button); // there is no role for a grip
    setFixedSize(FrameSize);
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::OpenHandCursor);
    setToolTip(tr("Drag to reorder this node"));
    setAccessibleName(tr("Drag node to reorder"));
    setAccessibleDescription(tr("The arrow keys move this node up and down"));
    addStep(tr("Move Up"), -1);
    addStep(tr("Move Down"), 1);
}

DragHandle::~DragHandle()
{
    delete m_glyph;
}

void DragHandle::addStep(const QString &name, int step)
{
    auto *const action = new QAction(name, this);
    connect(action, &QAction::triggered, this, [this, step] { onStep(step); });
    addAction(action);
}

void DragHandle::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        m_press = { event->scenePosition(), event->scenePosition(), topInWindow() };
}

void DragHandle::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_press)
        return;
    m_press->pointer = event->scenePosition();
    const QPointF moved = m_press->pointer - m_press->start;
    if (!m_isDragging && exact(std::hypot(moved.x(), moved.y())) < MinimumDistance)
        return;
    if (!std::exchange(m_isDragging, true))
        grabKeyboard(); // for Escape: a mouse press does not move the focus here
    showTranslation();
}

void DragHandle::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !m_press)
        return;
    m_press->pointer = event->scenePosition();
    const qreal distance = translation();
    const bool wasDragging = m_isDragging;
    endDrag();
    if (wasDragging)
        onDrop(distance);
}

void DragHandle::followCard()
{
    if (m_isDragging)
        showTranslation();
}

int DragHandle::topInWindow() const
{
    return mapTo(window(), QPoint()).y();
}

qreal DragHandle::translation() const
{
    const int cardMoved = topInWindow() - m_press->top;
    return exact(m_press->pointer.y() - m_press->start.y()) - cardMoved;
}

void DragHandle::keyPressEvent(QKeyEvent *event)
{
    const bool isUp = event->key() == Qt::Key_Up;
    if (isUp || event->key() == Qt::Key_Down)
        onStep(isUp ? -1 : 1);
    else if (event->key() == Qt::Key_Escape && m_press)
        endDrag();
    else
        QWidget::keyPressEvent(event);
}

void DragHandle::hideEvent(QHideEvent *event)
{
    endDrag();
    QWidget::hideEvent(event);
}

void DragHandle::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    if (!m_isDragging)
        Symbol::paint(painter, GlyphSymbol, QRectF(glyphPlace(), GlyphSize),
                      SatchelTheme::secondary);
    if (hasFocus())
        Painting::focusRing(painter, rect(), 5);
}

void DragHandle::showTranslation()
{
    auto *const list = parentWidget()->parentWidget();
    if (!m_glyph && list) {
        m_glyph = new SymbolView(GlyphSymbol, GlyphSize, SatchelTheme::secondary, list);
        m_glyph->show();
        setCursor(Qt::ClosedHandCursor);
        update();
    }
    if (m_glyph)
        m_glyph->move(mapTo(list, glyphPlace()) + QPoint(0, qRound(translation())));
    onTranslation(translation());
}

void DragHandle::endDrag()
{
    m_press.reset();
    if (!std::exchange(m_isDragging, false))
        return;
    releaseKeyboard();
    delete m_glyph;
    setCursor(Qt::OpenHandCursor);
    update();
    onTranslation(0);
}
