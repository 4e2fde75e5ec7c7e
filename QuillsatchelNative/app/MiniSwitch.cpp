#include "app/MiniSwitch.h"

#include "views/Painting.h"
#include "views/SatchelTheme.h"

#include <QPainter>

namespace
{

constexpr QSize TrackSize(26, 15);
constexpr qreal KnobInset = 1.5;
constexpr QMargins FocusMargins(Painting::FocusMargin, Painting::FocusMargin, Painting::FocusMargin,
                                Painting::FocusMargin);

} // namespace

MiniSwitch::MiniSwitch(QWidget *parent)
    : PlainButton(parent)
{
    setCheckable(true);
    setFixedSize(TrackSize.grownBy(FocusMargins));
}

void MiniSwitch::paintContent(QPainter &painter)
{
    const QRectF track = QRectF(rect()).marginsRemoved(FocusMargins);
    const auto off = SrgbColor::white(isHovered() ? 0.26 : 0.2);
    Painting::fillCapsule(painter, track, isChecked() ? SatchelTheme::accent : off);
    const qreal diameter = track.height() - 2 * KnobInset;
    const qreal left =
        isChecked() ? track.right() - KnobInset - diameter : track.left() + KnobInset;
    Painting::fillCapsule(painter, { left, track.top() + KnobInset, diameter, diameter },
                          SrgbColor::white(0.96));
}
