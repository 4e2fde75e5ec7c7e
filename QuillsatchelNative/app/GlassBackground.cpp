#include "app/GlassBackground.h"

#include "app/VisualEffectBackground.h"
#include "views/Painting.h"

#include <QLinearGradient>
#include <QPainter>

namespace
{

constexpr SrgbColor WindowColor { 0.045, 0.045, 0.075, 0.62 };
constexpr SrgbColor Tint { 0.035, 0.038, 0.075, 0.7 };
constexpr SrgbColor TopLeading { 0.18, 0.18, 0.3, 0.22 };
constexpr SrgbColor Middle { 0, 0, 0, 0 };
constexpr SrgbColor BottomTrailing { 0.35, 0.08, 0.08, 0.12 };

/// What `top` painted on `ground` looks like, as one colour.
constexpr SrgbColor over(const SrgbColor &top, const SrgbColor &ground)
{
    const double opacity = top.opacity + ground.opacity * (1 - top.opacity);
    const auto mix = [&top, &ground, opacity](double above, double below) {
        return (above * top.opacity + below * ground.opacity * (1 - top.opacity)) / opacity;
    };
    return { mix(top.red, ground.red), mix(top.green, ground.green), mix(top.blue, ground.blue),
             opacity };
}

} // namespace

void GlassBackground::paint(QPainter &painter, const QRect &rect, int radius, Backdrop backdrop)
{
    // All layers but the gradient are plain colours, so the whole stack is one gradient: the
    // panel is repainted at every scroll step, and one fill is a quarter of four.
    const auto window =
        backdrop == Backdrop::None ? over(WindowColor, SrgbColor::black()) : WindowColor;
    const auto &material = backdrop == Backdrop::Blurred ? VisualEffectBackground::blurringMaterial
                                                         : VisualEffectBackground::material;
    const auto ground = over(Tint, over(material, window));
    QLinearGradient gradient(rect.topLeft(), rect.bottomRight());
    gradient.setColorAt(0, Painting::qColor(over(TopLeading, ground)));
    gradient.setColorAt(0.5, Painting::qColor(over(Middle, ground)));
    gradient.setColorAt(1, Painting::qColor(over(BottomTrailing, ground)));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(gradient);
    painter.drawRoundedRect(Painting::onWholePixels(painter, rect), radius, radius);
}
