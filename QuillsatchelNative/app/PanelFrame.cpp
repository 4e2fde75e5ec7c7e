#include "app/PanelFrame.h"

#include "views/Painting.h"
#include "views/SatchelTheme.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QWindow>

namespace
{

constexpr int GripThickness = 4;
constexpr int CornerLength = 14; // the part of an edge that resizes both ways

Qt::CursorShape cursorFor(Qt::Edges edges)
{
    if (edges == (Qt::TopEdge | Qt::LeftEdge) || edges == (Qt::BottomEdge | Qt::RightEdge))
        return Qt::SizeFDiagCursor;
    if (edges == (Qt::TopEdge | Qt::RightEdge) || edges == (Qt::BottomEdge | Qt::LeftEdge))
        return Qt::SizeBDiagCursor;
    return edges & (Qt::LeftEdge | Qt::RightEdge) ? Qt::SizeHorCursor : Qt::SizeVerCursor;
}

} // namespace

PanelFrame::PanelFrame(QWidget *parent)
    : QWidget(parent)
{
    setMouseTracking(true);
}

void PanelFrame::render(bool isCompositing)
{
    const bool isMaximized = window()->isMaximized();
    m_radius = isCompositing && !isMaximized ? CornerRadius : 0;
    setAttribute(Qt::WA_TransparentForMouseEvents, isMaximized);
    update();
}

// Pointer events inside the border go to the content.
void PanelFrame::resizeEvent(QResizeEvent * /*event*/)
{
    const QMargins grip(GripThickness, GripThickness, GripThickness, GripThickness);
    setMask(QRegion(rect()) - QRegion(rect().marginsRemoved(grip)));
}

void PanelFrame::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF edge = Painting::onWholePixels(painter, rect());
    if (m_radius > 0) {
        QPainterPath corners;
        corners.addRect(edge);
        corners.addRoundedRect(edge, m_radius, m_radius);
        painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
        painter.fillPath(corners, Qt::black);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    }
    Painting::strokeRoundedRect(painter, edge, m_radius, SatchelTheme::border,
                                Painting::wholePixelLine(painter));
}

Qt::Edges PanelFrame::edgesAt(const QPoint &place) const
{
    const bool isOnSide = place.x() < GripThickness || place.x() >= width() - GripThickness;
    const bool isOnEnd = place.y() < GripThickness || place.y() >= height() - GripThickness;
    const int horizontalReach = isOnEnd ? CornerLength : GripThickness;
    const int verticalReach = isOnSide ? CornerLength : GripThickness;
    Qt::Edges edges;
    edges.setFlag(Qt::LeftEdge, place.x() < horizontalReach);
    edges.setFlag(Qt::RightEdge, place.x() >= width() - horizontalReach);
    edges.setFlag(Qt::TopEdge, place.y() < verticalReach);
    edges.setFlag(Qt::BottomEdge, place.y() >= height() - verticalReach);
    return edges;
}

void PanelFrame::mouseMoveEvent(QMouseEvent *event)
{
    setCursor(cursorFor(edgesAt(event->position().toPoint())));
}

void PanelFrame::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        window()->windowHandle()->startSystemResize(edgesAt(event->position().toPoint()));
}
