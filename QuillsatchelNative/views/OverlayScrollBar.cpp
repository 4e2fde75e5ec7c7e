#include "views/OverlayScrollBar.h"

#include "views/Painting.h"

#include <QCoreApplication>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleOptionSlider>

namespace
{

/// Scroll bars without arrows: the slider uses the whole length.
class ArrowlessStyle final : public QProxyStyle
{
public:
    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *returned) const override
    {
        if (hint == SH_ScrollBar_Transient)
            return 1;
        return QProxyStyle::styleHint(hint, option, widget, returned);
    }

    int pixelMetric(PixelMetric metric, const QStyleOption *option,
                    const QWidget *widget) const override
    {
        if (metric == PM_ScrollBarExtent)
            return OverlayScrollBar::Thickness;
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
};

QStyle *arrowlessStyle()
{
    static auto *const style = [] {
        auto *const created = new ArrowlessStyle;
        created->setParent(QCoreApplication::instance());
        return created;
    }();
    return style;
}

} // namespace

OverlayScrollBar::OverlayScrollBar(Qt::Orientation orientation, QWidget *parent)
    : QScrollBar(orientation, parent)
{
    setStyle(arrowlessStyle());
    setAttribute(Qt::WA_OpaquePaintEvent, false);
    setAttribute(Qt::WA_Hover);
    setCursor(Qt::ArrowCursor);
    setAccessibleName(tr("Scroll Bar"));
}

QSize OverlayScrollBar::sizeHint() const
{
    return { Thickness, Thickness };
}

void OverlayScrollBar::sliderChange(SliderChange change)
{
    QScrollBar::sliderChange(change);
    if (change == SliderRangeChange)
        setVisible(maximum() > minimum());
}

void OverlayScrollBar::paintEvent(QPaintEvent * /*event*/)
{
    QStyleOptionSlider option;
    initStyleOption(&option);
    const QRect slider =
        style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, this);
    QPainter painter(this);
    const bool isHighlighted = underMouse() || isSliderDown();
    Painting::fillCapsule(painter, QRectF(slider).adjusted(1, 1, -1, -1),
                          SrgbColor::white(isHighlighted ? 0.45 : 0.22));
}
