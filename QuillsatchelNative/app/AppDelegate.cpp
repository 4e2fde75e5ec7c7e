#include "app/AppDelegate.h"

#include "app/DarkAppearance.h"
#include "app/DialogChrome.h"
#include "app/FloatingPanel.h"
#include "app/PanelMenus.h"
#include "app/StatusItem.h"
#include "app/StatusMenu.h"
#include "app/TitleBar.h"
#include "views/FirstPaint.h"
#include "views/QuillsatchelView.h"
#include "views/Symbol.h"

#include <QApplication>

#include <chrono>

namespace
{

constexpr std::chrono::seconds PaintTimeout(5); // a covered panel is not painted

} // namespace

AppDelegate::AppDelegate(Platform &platform)
    : m_platform(platform)
    , m_textGestures(platform.pasteboard)
    , m_applicationChooser(
          platform.workspace, platform.mainQueue,
          [this](QDialog &dialog) { DialogChrome::addTo(dialog, m_platform.windowSystem); })
    , m_store(platform)
    , m_searchProvider(m_store)
    , m_launcherStore(m_applicationChooser, platform)
{
}

AppDelegate::~AppDelegate()
{
    m_showingOnDesktop.cancel();
}

void AppDelegate::applicationDidFinishLaunching()
{
    DarkAppearance::apply();
    makePanel();
    makeMenus();
    showPanel();
    m_showingOnDesktop = m_platform.mainQueue.asyncAfter(PaintTimeout, [this] { showOnDesktop(); });
    afterFirstPaint(*m_panel, m_platform.mainQueue, [this] { m_showingOnDesktop.run(); });
}

void AppDelegate::makePanel()
{
    m_panel = std::make_unique<FloatingPanel>(m_platform.windowSystem, m_windowPreferences);
    m_view = new QuillsatchelView(m_store, m_launcherStore, m_windowPreferences, m_platform,
                                  TitleBar::Height, m_panel.get());
    auto *const titleBar = new TitleBar(m_windowPreferences, m_panel.get());
    titleBar->onShowAbout = [this] { showAbout(); };
    m_panel->setContent(m_view, titleBar);
    m_panel->center();
    m_panel->setFocus(); // otherwise the first button would look focused
}

void AppDelegate::makeMenus()
{
    m_menus = new PanelMenus(*m_panel, *m_view, m_platform.pasteboard,
                             [this](const MenuItem &item) { perform(item); });
    m_menus->launcherItems = [this] { return launcherItemsOfPanel(); };
    m_panel->onShowMenu = [this](const QPoint &place, QContextMenuEvent::Reason reason) {
        m_menus->popUp(place, reason);
    };
}

// Without a tray, the panel's menu lists the launchers of the status menu.
std::vector<MenuItem> AppDelegate::launcherItemsOfPanel() const
{
    if (!m_statusItem || m_statusItem->isShown())
        return {};
    return StatusMenu::makeLauncherItems(m_launcherStore, m_panel->devicePixelRatio());
}

// Not part of the start-up: drawing the icon takes longer than anything in the panel, and the rest
// makes D-Bus calls.
void AppDelegate::showOnDesktop()
{
    QApplication::setWindowIcon(Symbol::applicationIcon(QStringLiteral("DockIcon")));
    configureStatusItem();
    answerDesktopSearch();
    if (m_platform.statusBar.hasMenuBar()) // any menu bar loads all of Qt's image plugins
        m_menus->offerToDesktop();
}

void AppDelegate::configureStatusItem()
{
    m_statusItem =
        std::make_unique<StatusItem>(m_platform.statusBar, m_windowPreferences, m_launcherStore,
                                     [this](const MenuItem &item) { perform(item); });
    m_panel->canBeBroughtBack = [this] { return m_statusItem->isShown(); };
    m_statusItem->begin();
}

void AppDelegate::answerDesktopSearch()
{
    m_searchProvider.onShow = [this](QUuid tabID, QUuid blockID) { showNode(tabID, blockID); };
    m_searchProvider.onShowAll = [this](const QString &query) { find(query); };
    m_platform.desktopSearch.begin(m_searchProvider);
}

void AppDelegate::perform(const MenuItem &item)
{
    using Action = MenuItem::Action;
    switch (item.action) {
    case Action::none:
        return;
    case Action::showPanel:
        return showPanel();
    case Action::toggleFloating:
        return toggleFloating();
    case Action::showAbout:
        return showAbout();
    case Action::showSettings:
        return showSettings();
    case Action::hide:
        return hide();
    case Action::launchConfiguredItem:
        return launchConfiguredItem(item);
    case Action::quitApp:
        return quitApp();
    }
}

void AppDelegate::showPanel(const StartupToken &token)
{
    m_panel->makeKeyAndOrderFront(token);
}

void AppDelegate::toggleFloating()
{
    m_windowPreferences.alwaysOnTop.set(!m_windowPreferences.alwaysOnTop.get());
}

void AppDelegate::showAbout()
{
    showCard(m_windowPreferences.showsSettingsCard, m_windowPreferences.showsInfoCard);
}

void AppDelegate::showSettings()
{
    showCard(m_windowPreferences.showsInfoCard, m_windowPreferences.showsSettingsCard);
}

// Clears the other flag first, so that never both cards are requested.
void AppDelegate::showCard(Published<bool> &other, Published<bool> &card)
{
    other.set(false);
    card.set(true);
    showPanel();
}

void AppDelegate::showNode(QUuid tabID, QUuid blockID)
{
    showPanel();
    m_view->showNode(tabID, blockID);
}

void AppDelegate::find(const QString &query)
{
    showPanel();
    m_view->find(query);
}

void AppDelegate::hide()
{
    m_applicationChooser.cancel();
    m_panel->orderOut();
}

void AppDelegate::launchConfiguredItem(const MenuItem &sender)
{
    if (sender.representedSlot)
        m_launcherStore.launch(*sender.representedSlot);
}

void AppDelegate::quitApp()
{
    QCoreApplication::quit();
}
