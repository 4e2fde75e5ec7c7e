#include "app/AppDelegate.h"

#include "app/DarkAppearance.h"
#include "app/DialogChrome.h"
#include "app/FloatingPanel.h"
#include "app/PanelMenus.h"
#include "app/StatusItem.h"
#include "app/StatusMenu.h"
#include "app/TitleBar.h"
#include "views/QuillsatchelView.h"
#include "views/Symbol.h"

#include <QAction>
#include <QApplication>

#include <chrono>
#include <optional>
#include <utility>

namespace
{

constexpr std::chrono::milliseconds DesktopDelay(100); // the first frame stands by then

} // namespace

AppDelegate::AppDelegate(Platform &platform)
    : m_platform(platform)
    , m_textGestures(platform.pasteboard)
    , m_applicationChooser(
          platform.workspace, platform.mainQueue,
          [this](QDialog &dialog) { DialogChrome::addTo(dialog, m_platform.windowSystem); })
    , m_store(platform)
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
    observeWindowPreferences();
    showPanel();
    m_showingOnDesktop = m_platform.mainQueue.asyncAfter(DesktopDelay, [this] { showOnDesktop(); });
}

void AppDelegate::makePanel()
{
    m_panel = std::make_unique<FloatingPanel>(m_platform.windowSystem);
    auto *const view = new QuillsatchelView(m_store, m_launcherStore, m_windowPreferences,
                                            m_platform, TitleBar::Height, m_panel.get());
    auto *const titleBar = new TitleBar(m_windowPreferences, m_panel.get());
    titleBar->onShowAbout = [this] { showAbout(); };
    m_panel->setContent(view, titleBar);
    m_panel->center();
    m_panel->setFocus(); // else the first button would look chosen
}

void AppDelegate::makeMenus()
{
    m_menus = new PanelMenus(*m_panel, m_platform.pasteboard,
                             [this](const MenuItem &item) { perform(item); });
    m_menus->launcherItems = [this] { return launcherItemsOfPanel(); };
    m_panel->onShowMenu = [this](const QPoint &place, QContextMenuEvent::Reason reason) {
        m_menus->popUp(place, reason);
    };
}

// The panel's menu stands in for the status menu while no tray shows that one.
std::vector<MenuItem> AppDelegate::launcherItemsOfPanel() const
{
    if (!m_statusItem || m_statusItem->isShown())
        return {};
    return StatusMenu::makeLauncherItems(m_launcherStore, m_panel->devicePixelRatio());
}

// Drawing the icon takes longer than anything in the panel, and the desktop is asked over D-Bus;
// nobody waits for either.
void AppDelegate::showOnDesktop()
{
    QApplication::setWindowIcon(Symbol::applicationIcon(QStringLiteral("DockIcon")));
    configureStatusItem();
    m_menus->offerToDesktop();
}

void AppDelegate::configureStatusItem()
{
    m_statusItem = std::make_unique<StatusItem>(
        m_platform.statusBar, [this](const MenuItem &item) { perform(item); },
        [this] {
            m_launcherCancellable = m_launcherStore.slots().sink(
                [this](const LauncherSlots & /*slots*/) { rebuildStatusMenu(); });
        });
    m_panel->canBeBroughtBack = [this] { return m_statusItem->isShown(); };
    m_statusItem->begin();
}

void AppDelegate::rebuildStatusMenu()
{
    m_statusItem->setMenu(StatusMenu::make(m_windowPreferences.alwaysOnTop.get(), m_launcherStore,
                                           qApp->devicePixelRatio()));
    m_alwaysOnTopMenuItem =
        MenuMirror::entryFor(m_statusItem->menu(), MenuItem::Action::ToggleFloating);
}

void AppDelegate::observeWindowPreferences()
{
    m_preferencesCancellable = m_windowPreferences.alwaysOnTop.sink(
        [this, earlier = std::optional<bool>()](bool isOnTop) mutable {
            if (std::exchange(earlier, isOnTop) == isOnTop)
                return;
            m_panel->setFloating(isOnTop);
            if (m_alwaysOnTopMenuItem)
                m_alwaysOnTopMenuItem->setChecked(isOnTop);
        });
}

void AppDelegate::perform(const MenuItem &item)
{
    using Action = MenuItem::Action;
    switch (item.action) {
    case Action::ShowPanel:
        return showPanel();
    case Action::ToggleFloating:
        return toggleFloating();
    case Action::ShowAbout:
        return showAbout();
    case Action::ShowSettings:
        return showSettings();
    case Action::Hide:
        return hide();
    case Action::LaunchConfiguredItem:
        return launchConfiguredItem(item);
    case Action::Quit:
        return quitApp();
    default:
        return;
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

// The other goes first: the two are never asked for at once.
void AppDelegate::showCard(Published<bool> &other, Published<bool> &card)
{
    other.set(false);
    card.set(true);
    showPanel();
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
