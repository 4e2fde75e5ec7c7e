#include "app/EmojiFont.h"

#include <QApplication>
#include <QFont>

namespace EmojiFont
{

void apply(const QString &family,
           const std::function<QString(const QStringList &families)> &realFamily)
{
    if (family.isEmpty())
        return;
    const QFont general = QApplication::font();
    const QString realGeneral = realFamily(general.families());
    // The real family: for an alias such as "Sans Serif", Qt would draw all text with the first
    // family in the list that is a real font.
    const auto withEmoji = [&](QFont font) {
        const QStringList families = font.families();
        const QString real = families == general.families() ? realGeneral : realFamily(families);
        font.setFamilies(QStringList { real, family } + families.mid(1));
        return font;
    };
    // Setting the general font discards the desktop's fonts for menus and tooltips.
    const QFont menuFont = QApplication::font("QMenu");
    const QFont tooltipFont = QApplication::font("QTipLabel");
    QApplication::setFont(withEmoji(general));
    QApplication::setFont(withEmoji(menuFont), "QMenu");
    QApplication::setFont(withEmoji(tooltipFont), "QTipLabel");
}

} // namespace EmojiFont
