#include "app/TrafficLight.h"

#include "views/Painting.h"
#include "views/Symbol.h"

#include <QPainter>

#include <utility>

namespace
{

constexpr int Diameter = 12;
constexpr int GlyphSize = 8;

} // namespace

TrafficLight::TrafficLight(QString symbol, const SrgbColor &color, const QString &label,
                           QWidget *parent)
    : PlainButton(parent)
    , m_symbol(std::move(symbol))
    , m_color(color)
{
    setLabel(label);
    setFixedSize(Diameter + 2 * Painting::FocusMargin, Diameter + 2 * Painting::FocusMargin);
}

void TrafficLight::paintContent(QPainter &painter)
{
    const QRectF disc =
        QRectF(rect()).marginsRemoved({ Painting::FocusMargin, Painting::FocusMargin,
                                        Painting::FocusMargin, Painting::FocusMargin });
    Painting::fillCapsule(painter, disc, m_color);
    if (!isHovered() && !hasFocus())
        return;
    QRectF frame(0, 0, GlyphSize, GlyphSize);
    frame.moveCenter(disc.center());
    Symbol::paint(painter, m_symbol, frame, SrgbColor::black(0.65));
}
