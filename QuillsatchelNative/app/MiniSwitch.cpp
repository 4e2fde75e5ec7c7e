#include "app/MiniSwitch.h"

#include "views/Painting.h"
#include "views/SatchelTheme.h"

#include <QPainter>

MiniSwitch::MiniSwitch(QWidget *parent)
    : PlainButton(parent)
{
    setCheckable(true);
    setFixedSize(sizeHint());
}

void MiniSwitch::paintContent(QPainter &painter)
{
    constexpr qreal KnobInset = 1.5;
    const auto off = SrgbColor::white(isHovered() ? 0.26 : 0.2);
    Painting::fillCapsule(painter, rect(), isChecked() ? SatchelTheme::accent : off);
    QRectF knob(0, 0, height() - 2 * KnobInset, height() - 2 * KnobInset);
    knob.moveTop(KnobInset);
    if (isChecked())
        knob.moveRight(width() - KnobInset);
    else
        knob.moveLeft(KnobInset);
    Painting::fillCapsule(painter, knob, SrgbColor::white(0.96));
}
