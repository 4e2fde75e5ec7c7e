#include "views/TextField.h"

#include "views/Painting.h"
#include "views/PushButton.h"
#include "views/SatchelTheme.h"

#include <QPainter>

#include <climits>

namespace
{

constexpr int Radius = 5;
constexpr int HorizontalPadding = 4;
constexpr int BottomPadding = 1; // Qt centres text half a point too low
constexpr int Width = 120;

} // namespace

TextField::TextField(QWidget *parent)
    : QLineEdit(parent)
{
    setFont(Painting::systemFont(11));
    setFrame(false);
    setTextMargins(HorizontalPadding, 0, HorizontalPadding, BottomPadding);
    setMaxLength(INT_MAX);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize TextField::sizeHint() const
{
    return { Width, PushButton::Height };
}

void TextField::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    Painting::fillRoundedRect(painter, rect(), Radius, SrgbColor::black(0.3));
    if (hasFocus())
        Painting::focusRing(painter, rect(), Radius);
    else
        Painting::strokeRoundedRect(painter, rect(), Radius, SrgbColor::white(0.4));
    painter.end();
    QLineEdit::paintEvent(event);
}
