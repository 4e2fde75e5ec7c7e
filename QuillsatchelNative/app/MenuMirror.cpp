#include "app/MenuMirror.h"

#include "support/Utf8.h"
#include "views/Symbol.h"

#include <QAction>
#include <QMenu>

#include <algorithm>

namespace
{

using namespace Qt::StringLiterals;

// To be seen on the light menus of one desktop and the dark ones of another.
constexpr SrgbColor SymbolColor { 0.53, 0.53, 0.56 };
constexpr int SymbolSize = 16;

QString labelForQt(QString title)
{
    return title.replace(u'&', "&&"_L1);
}

// Qt makes an underscore of the first ampersand, also of a doubled one, and hands on the others as
// they are: the first has to be one that marks a letter.
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

} // namespace

QAction *MenuMirror::makeAction(const MenuItem &item, const Perform &perform, QObject *parent,
                                Reader reader)
{
    const auto label = reader == Reader::Bus ? labelForBus(item.title) : labelForQt(item.title);
    auto *const action = new QAction(label, parent);
    if (item.isSeparator()) {
        action->setSeparator(true);
        return action;
    }
    action->setData(QVariant::fromValue(item.action));
    action->setMenuRole(QAction::NoRole); // else Qt would look for meaning in the words
    action->setShortcut(item.keyEquivalent);
    if (item.image)
        action->setIcon(iconOf(*item.image));
    if (item.state) {
        action->setCheckable(true);
        action->setChecked(*item.state);
    }
    QObject::connect(action, &QAction::triggered, parent, [perform, item] { perform(item); });
    return action;
}

void MenuMirror::fill(QMenu &menu, const std::vector<MenuItem> &items, const Perform &perform,
                      Reader reader)
{
    menu.clear();
    for (const auto &item : items)
        menu.addAction(makeAction(item, perform, &menu, reader));
}

QAction *MenuMirror::entryFor(const QMenu &menu, MenuItem::Action action)
{
    const auto entries = menu.actions();
    const auto found = std::ranges::find_if(
        entries, [action](const QAction *entry) { return actionOf(*entry) == action; });
    return found == entries.end() ? nullptr : *found;
}

MenuItem::Action MenuMirror::actionOf(const QAction &entry)
{
    return entry.data().value<MenuItem::Action>();
}
