#include "views/ScrollView.h"

#include "views/Hover.h"
#include "views/OverlayScrollBar.h"

#include <QApplication>
#include <QEvent>
#include <QLayout>
#include <QWheelEvent>

#include <algorithm>
#include <optional>

namespace
{

std::optional<QAbstractSlider::SliderAction> actionOf(int key)
{
    switch (key) {
    case Qt::Key_Up:
        return QAbstractSlider::SliderSingleStepSub;
    case Qt::Key_Down:
        return QAbstractSlider::SliderSingleStepAdd;
    case Qt::Key_PageUp:
        return QAbstractSlider::SliderPageStepSub;
    case Qt::Key_PageDown:
        return QAbstractSlider::SliderPageStepAdd;
    case Qt::Key_Home:
        return QAbstractSlider::SliderToMinimum;
    case Qt::Key_End:
        return QAbstractSlider::SliderToMaximum;
    default:
        return std::nullopt;
    }
}

} // namespace

ScrollView::ScrollView(QWidget *parent)
    : QWidget(parent)
    , m_content(new QWidget(this))
    , m_scrollBar(new OverlayScrollBar(Qt::Vertical, this))
{
    m_content->installEventFilter(this);
    m_scrollBar->setSingleStep(OverlayScrollBar::LineStep);
    connect(m_scrollBar, &QScrollBar::valueChanged, this, &ScrollView::placeContent);
    connect(m_scrollBar, &QScrollBar::actionTriggered, this, [this] { m_row.clear(); });
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget * /*earlier*/, QWidget *focus) { revealFocus(focus); });
}

ScrollView::~ScrollView()
{
    // The content is deleted later, and moves the focus while this is partly destroyed.
    disconnect(qApp, nullptr, this, nullptr);
}

QSize ScrollView::sizeHint() const
{
    return m_content->sizeHint();
}

bool ScrollView::eventFilter(QObject *object, QEvent *event)
{
    if (object == m_content && event->type() == QEvent::LayoutRequest) {
        layOut();
        updateGeometry();
        // Immediately: otherwise the next frame would show the view with its former height.
        QCoreApplication::sendPostedEvents(parent(), QEvent::LayoutRequest);
    }
    return QWidget::eventFilter(object, event);
}

void ScrollView::resizeEvent(QResizeEvent * /*event*/)
{
    constexpr int Inset = 4;
    m_scrollBar->setGeometry(width() - OverlayScrollBar::Thickness - Inset, 0,
                             OverlayScrollBar::Thickness, height());
    layOut();
}

void ScrollView::layOut()
{
    const int contentHeight = m_content->sizeHint().height();
    m_scrollBar->setPageStep(height());
    m_scrollBar->setRange(0, std::max(0, contentHeight - height()));
    m_content->resize(width(), contentHeight);
    placeContent();
    revealRow();
}

void ScrollView::placeContent()
{
    m_content->move(0, -m_scrollBar->value());
    Hover::update(*this);
}

void ScrollView::reveal(QWidget &row)
{
    m_row = &row;
    revealRow();
}

void ScrollView::revealRow()
{
    if (!m_row)
        return;
    const QRect place = m_row->geometry();
    if (m_scrollBar->value() + height() < place.bottom() + 1)
        m_scrollBar->setValue(place.bottom() + 1 - height());
    if (m_scrollBar->value() > place.top())
        m_scrollBar->setValue(place.top());
}

void ScrollView::revealFocus(QWidget *focus)
{
    if (!focus || !m_content->isAncestorOf(focus))
        return;
    auto *row = focus;
    while (row->parentWidget() != m_content)
        row = row->parentWidget();
    reveal(*row);
}

bool ScrollView::scroll(int key)
{
    const auto action = actionOf(key);
    if (action)
        m_scrollBar->triggerAction(*action);
    return action.has_value();
}

void ScrollView::wheelEvent(QWheelEvent *event)
{
    QApplication::sendEvent(m_scrollBar, event);
}
