#include "app/StatusItem.h"

#include "views/Symbol.h"

#include <QCursor>

#include <utility>

StatusItem::StatusItem(StatusBar &statusBar, MenuMirror::Perform perform,
                       std::function<void()> prepare)
    : m_statusBar(statusBar)
    , m_perform(std::move(perform))
    , m_prepare(std::move(prepare))
{
}

StatusItem::~StatusItem()
{
    m_menu.clear(); // Qt forgets what it made of the entries for the bus when they go with the menu
}

void StatusItem::begin()
{
    m_statusBar.begin();
    m_kindCancellable = m_statusBar.kind.sink([this](StatusBar::Kind kind) { show(kind); });
}

bool StatusItem::isShown() const
{
    return m_icon && m_statusBar.kind.get() == m_kind;
}

void StatusItem::show(StatusBar::Kind kind)
{
    // Qt makes icons of one kind in a process, and follows bars of that kind by itself.
    if (kind == StatusBar::Kind::none || m_icon)
        return;
    m_kind = kind;
    m_prepare();
    m_icon.emplace(Symbol::applicationIcon(QStringLiteral("CupIcon")));
    m_icon->setToolTip(QStringLiteral("Quillsatchel"));
    m_icon->setContextMenu(&m_menu);
    connect(&*m_icon, &QSystemTrayIcon::activated, this, &StatusItem::activate);
    m_icon->show();
}

void StatusItem::setMenu(const Menu &menu)
{
    const bool isOverBus = m_kind == StatusBar::Kind::notifier;
    MenuMirror::fill(m_menu, menu.items, m_perform,
                     isOverBus ? MenuMirror::Reader::Bus : MenuMirror::Reader::Qt);
}

// A bar that sends a plain click has a menu of its own for the other button.
void StatusItem::activate(QSystemTrayIcon::ActivationReason reason)
{
    if (reason != QSystemTrayIcon::Trigger)
        return;
    if (m_kind == StatusBar::Kind::embedded)
        m_menu.popup(QCursor::pos());
    else
        m_perform({ .action = MenuItem::Action::ShowPanel });
}
