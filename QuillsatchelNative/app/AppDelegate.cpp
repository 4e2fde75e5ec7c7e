#include "app/AppDelegate.h"

#include "app/DarkAppearance.h"
#include "app/FloatingPanel.h"
#include "app/TitleBar.h"
#include "views/QuillsatchelView.h"
#include "views/Symbol.h"

#include <QApplication>
#include <QShortcut>

#include <chrono>
#include <optional>
#include <utility>

namespace
{

constexpr std::chrono::milliseconds IconDelay(100); // the first frame stands by then

} // namespace

AppDelegate::AppDelegate(Platform &platform)
    : m_platform(platform)
    , m_applicationChooser(platform.workspace)
    , m_store(platform)
    , m_launcherStore(m_applicationChooser, platform)
{
}

AppDelegate::~AppDelegate() = default;

void AppDelegate::applicationDidFinishLaunching()
{
    QApplication::setQuitOnLastWindowClosed(false);
    DarkAppearance::apply();
    makePanel();
    observeWindowPreferences();
    showPanel();
    // Drawing the icon takes longer than anything in the panel; nobody waits for it.
    m_platform.mainQueue.asyncAfter(IconDelay, [] {
        QApplication::setWindowIcon(Symbol::applicationIcon(QStringLiteral("DockIcon")));
    });
}

void AppDelegate::makePanel()
{
    m_panel = std::make_unique<FloatingPanel>(m_platform.windowSystem);
    auto *const view = new QuillsatchelView(m_store, m_launcherStore, m_windowPreferences,
                                            m_platform, TitleBar::Height, m_panel.get());
    auto *const titleBar = new TitleBar(m_windowPreferences, m_panel.get());
    titleBar->onShowAbout = [this] { showAbout(); };
    m_panel->setContent(view, titleBar);
    auto *const settingsKey = new QShortcut(Qt::CTRL | Qt::Key_Comma, m_panel.get());
    QObject::connect(settingsKey, &QShortcut::activated, m_panel.get(), [this] { showSettings(); });
    m_panel->center();
    m_panel->setFocus(); // else the first button would look chosen
}

void AppDelegate::observeWindowPreferences()
{
    m_preferencesCancellable = m_windowPreferences.alwaysOnTop.sink(
        [this, earlier = std::optional<bool>()](bool isOnTop) mutable {
            if (std::exchange(earlier, isOnTop) != isOnTop)
                m_panel->setFloating(isOnTop);
        });
}

void AppDelegate::showPanel()
{
    m_panel->makeKeyAndOrderFront();
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
