#include "views/ColorMenu.h"

#include "views/SatchelTheme.h"
#include "views/Symbol.h"

#include <QAction>
#include <QActionGroup>
#include <QStyleOptionMenuItem>

namespace
{

using namespace Qt::StringLiterals;

// In points. The tick is larger because its line is thin.
constexpr int DiscSize = 12;
constexpr int TickSize = 16;

QIcon iconOf(BlockColor color, bool isCurrent)
{
    const auto tint = color.swiftUIColor().value_or(SatchelTheme::secondary);
    if (isCurrent)
        return Symbol::menuIcon(u"checkmark"_s, SrgbColor::white(0.92), TickSize);
    return Symbol::menuIcon(u"circle.fill"_s, tint, DiscSize, Symbol::WhenSelected::outlined);
}

} // namespace

ColorMenu::ColorMenu(BlockColor current, QWidget *owner)
    : PopupMenu(owner)
{
    setAttribute(Qt::WA_DeleteOnClose);
    auto *const group = new QActionGroup(this);
    for (const BlockColor color : BlockColor::allCases) {
        const bool isCurrent = color == current;
        auto *const entry =
            addAction(iconOf(color, isCurrent), QString::fromStdString(color.title()), this,
                      [this, color] { onColor(color); });
        entry->setCheckable(true);
        entry->setChecked(isCurrent);
        group->addAction(entry);
        if (isCurrent)
            setActiveAction(entry);
    }
}

// The icon shows the tick; the style would draw a second one with a frame.
void ColorMenu::initStyleOption(QStyleOptionMenuItem *option, const QAction *action) const
{
    PopupMenu::initStyleOption(option, action);
    option->menuHasCheckableItems = false;
    option->checkType = QStyleOptionMenuItem::NotCheckable;
    option->checked = false;
}
