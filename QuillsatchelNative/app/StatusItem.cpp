#include "app/StatusItem.h"

#include "app/StatusMenu.h"
#include "views/Symbol.h"

#include <QApplication>
#include <QCursor>

#include <utility>

StatusItem::StatusItem(StatusBar &statusBar, const WindowPreferences &windowPreferences,
                       const LauncherStore &launcherStore, MenuMirror::Perform perform)
    : m_statusBar(statusBar)
    , m_windowPreferences(windowPreferences)
    , m_launcherStore(launcherStore)
    , m_perform(std::move(perform))
{
}

StatusItem::~StatusItem()
{
    m_menu.clear(); // Qt frees its D-Bus entries only when the actions go before the menu
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
    // Qt makes icons of one kind per process and follows trays of that kind itself.
    if (kind == StatusBar::Kind::none || m_icon)
        return;
    m_kind = kind;
    observeModels();
    m_icon.emplace(Symbol::applicationIcon(QStringLiteral("CupIcon")));
    m_icon->setToolTip(QStringLiteral("Quillsatchel"));
    m_icon->setContextMenu(&m_menu);
    connect(&*m_icon, &QSystemTrayIcon::activated, this, &StatusItem::activate);
    m_icon->show();
}

void StatusItem::observeModels()
{
    m_launcherCancellable = m_launcherStore.slots().sink(
        [this](const LauncherSlots & /*slots*/) { rebuildStatusMenu(); });
    m_preferencesCancellable = m_windowPreferences.alwaysOnTop.sink(
        [this](bool isOnTop) { m_alwaysOnTopMenuItem->setChecked(isOnTop); });
}

void StatusItem::rebuildStatusMenu()
{
    const auto reader =
        m_kind == StatusBar::Kind::notifier ? MenuMirror::Reader::bus : MenuMirror::Reader::qt;
    const auto items = StatusMenu::make(m_windowPreferences.alwaysOnTop.get(), m_launcherStore,
                                        qApp->devicePixelRatio());
    m_menu.clear();
    for (const auto &item : items) {
        auto *const entry = MenuMirror::addAction(m_menu, item, m_perform, reader);
        if (item.action == MenuItem::Action::toggleFloating)
            m_alwaysOnTopMenuItem = entry;
    }
}

// A tray that reports a plain click opens the menu itself with the other button.
void StatusItem::activate(QSystemTrayIcon::ActivationReason reason)
{
    if (reason != QSystemTrayIcon::Trigger)
        return;
    if (m_kind == StatusBar::Kind::embedded)
        m_menu.popup(QCursor::pos());
    else
        m_perform({ .action = MenuItem::Action::showPanel });
}
