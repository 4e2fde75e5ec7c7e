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

} // namespace

QAction *MenuMirror::makeAction(const MenuItem &item, const Perform &perform, QObject *parent,
                                Reader reader)
{
    const auto label = reader == Reader::bus ? labelForBus(item.title) : labelForQt(item.title);
    auto *const action = new QAction(label, parent);
    if (item.isSeparator()) {
        action->setSeparator(true);
        return action;
    }
    action->setMenuRole(QAction::NoRole); // otherwise Qt derives a role from the title
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

void MenuMirror::fill(QMenu &menu, const std::vector<MenuItem> &items, const Perform &perform)
{
    menu.clear();
    for (const auto &item : items)
        menu.addAction(makeAction(item, perform, &menu));
}
