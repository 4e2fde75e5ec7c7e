#include "app/MenuMirror.h"

#include "support/Utf8.h"
#include "views/Symbol.h"

#include <QAction>
#include <QMenu>

namespace
{

using namespace Qt::StringLiterals;

// Visible on light and on dark menus.
constexpr SrgbColor SymbolColor { 0.53, 0.53, 0.56 };
constexpr int SymbolSize = 16;

QString labelForQt(QString title)
{
    return title.replace(u'&', "&&"_L1);
}

// Qt turns the first ampersand into an underscore, even a doubled one, and passes on the others
// unchanged. So the first one has to mark a mnemonic.
QString labelForBus(QString title)
{
    title.replace(u'_', "__"_L1);
    return title.contains(u'&') ? u'&' + title : title;
}

QIcon iconOf(const LauncherIcon &icon)
{
    if (icon.image.isNull())
        return Symbol::menuIcon(stringFromUtf8(icon.symbol), SymbolColor, SymbolSize);
    return { QPixmap::fromImage(icon.image) };
}

// Trays ask for the whole menu as soon as there is an icon. Then Qt writes each icon as PNG, for
// which it loads all image plug-ins. Desktops report that a menu opens.
void addIconOnOpening(const QMenu &menu, QAction &action, const LauncherIcon &icon)
{
    QObject::connect(&menu, &QMenu::aboutToShow, &action, [&action, icon] {
        if (action.icon().isNull())
            action.setIcon(iconOf(icon));
    });
}

} // namespace

QAction *MenuMirror::addAction(QMenu &menu, const MenuItem &item, const Perform &perform,
                               Reader reader)
{
    if (item.isSeparator())
        return menu.addSeparator();
    auto *const action =
        menu.addAction(reader == Reader::bus ? labelForBus(item.title) : labelForQt(item.title));
    action->setMenuRole(QAction::NoRole); // otherwise Qt derives a role from the title
    action->setShortcut(item.keyEquivalent);
    if (item.image)
        addIconOnOpening(menu, *action, *item.image);
    if (item.state) {
        action->setCheckable(true);
        action->setChecked(*item.state);
    }
    QObject::connect(action, &QAction::triggered, &menu, [perform, item] { perform(item); });
    return action;
}

void MenuMirror::fill(QMenu &menu, const std::vector<MenuItem> &items, const Perform &perform)
{
    menu.clear();
    for (const auto &item : items)
        addAction(menu, item, perform);
}
