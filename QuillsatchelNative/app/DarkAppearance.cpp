#include "app/DarkAppearance.h"

#include "views/Painting.h"
#include "views/SatchelTheme.h"

#include <QApplication>
#include <QPalette>
#include <QToolTip>

namespace
{

QColor white(double opacity)
{
    return Painting::qColor(SrgbColor::white(opacity));
}

QPalette darkPalette()
{
    const QColor background = Painting::qColor(SatchelTheme::raised);
    QPalette palette(background.lighter(115), background);
    palette.setColor(QPalette::Base, Qt::transparent);
    palette.setColor(QPalette::Text, white(0.92));
    palette.setColor(QPalette::WindowText, white(0.92));
    palette.setColor(QPalette::ButtonText, white(0.92));
    palette.setColor(QPalette::PlaceholderText, white(0.5));
    palette.setColor(QPalette::Highlight, Painting::qColor(SatchelTheme::accent.withOpacity(0.75)));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    // Only the focused text has the accent colour.
    palette.setColor(QPalette::Inactive, QPalette::Highlight, white(0.2));
    palette.setColor(QPalette::ToolTipBase, background);
    palette.setColor(QPalette::ToolTipText, white(0.92));
    palette.setColor(QPalette::Disabled, QPalette::Text, white(0.35));
    palette.setColor(QPalette::Disabled, QPalette::WindowText, white(0.35));
    palette.setColor(QPalette::Disabled, QPalette::ButtonText, white(0.35));
    // Fusion draws disabled entries with a shadow, which looks blurred on a dark background.
    palette.setColor(QPalette::Disabled, QPalette::Light, Qt::transparent);
    return palette;
}

} // namespace

void DarkAppearance::apply()
{
    QApplication::setStyle(QStringLiteral("fusion"));
    const QPalette palette = darkPalette();
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette);
}
