#include "app/GlassBackground.h"

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

/// One colour that looks like `top` painted on `base`.
constexpr SrgbColor over(const SrgbColor &top, const SrgbColor &base)
{
    const double opacity = top.opacity + base.opacity * (1 - top.opacity);
    const auto mix = [&top, &base, opacity](double above, double below) {
        return (above * top.opacity + below * base.opacity * (1 - top.opacity)) / opacity;
    };
    return { mix(top.red, base.red), mix(top.green, base.green), mix(top.blue, base.blue),
             opacity };
}

} // namespace

void GlassBackground::paint(QPainter &painter, const QRect &rect, int radius, Backdrop backdrop)
{
    // The other layers are plain colours, so one gradient shows the whole stack. One fill takes a
    // quarter of the time of four, and every scroll step repaints the panel.
    const auto window =
        backdrop == Backdrop::none ? over(WindowColor, SrgbColor::black()) : WindowColor;
    const auto &material = backdrop == Backdrop::blurred ? VisualEffectBackground::blurringMaterial
                                                         : VisualEffectBackground::material;
    const auto base = over(Tint, over(material, window));
    QLinearGradient gradient(rect.topLeft(), rect.bottomRight());
    gradient.setColorAt(0, Painting::qColor(over(TopLeading, base)));
    gradient.setColorAt(0.5, Painting::qColor(over(Middle, base)));
    gradient.setColorAt(1, Painting::qColor(over(BottomTrailing, base)));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(gradient);
    painter.drawRoundedRect(Painting::onWholePixels(painter, rect), radius, radius);
}
