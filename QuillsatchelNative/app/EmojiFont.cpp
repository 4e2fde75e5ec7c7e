#include "app/EmojiFont.h"

#include <QApplication>
#include <QFont>
#include <QFontInfo>

namespace EmojiFont
{

namespace
{

// Uses the resolved family: for an alias such as "Sans Serif", Qt would draw all text with the
// first family in the list that is a real font.
QFont withEmoji(QFont font, const QString &family)
{
    font.setFamilies(QStringList { QFontInfo(font).family(), family } + font.families().mid(1));
    return font;
}

} // namespace

void apply(const QString &family)
{
    if (family.isEmpty())
        return;
    // Setting the general font discards the desktop's fonts for menus and tooltips.
    const QFont menuFont = QApplication::font("QMenu");
    const QFont tooltipFont = QApplication::font("QTipLabel");
    QApplication::setFont(withEmoji(QApplication::font(), family));
    QApplication::setFont(withEmoji(menuFont, family), "QMenu");
    QApplication::setFont(withEmoji(tooltipFont, family), "QTipLabel");
}

} // namespace EmojiFont
