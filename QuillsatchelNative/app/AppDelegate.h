#pragma once

#include "app/MenuItem.h"
#include "app/TextGestures.h"
#include "launchers/LauncherStore.h"
#include "library/SatchelStore.h"
#include "platform/Platform.h"
#include "preferences/WindowPreferences.h"
#include "support/Cancellable.h"
#include "views/PanelApplicationChooser.h"

#include <QPointer>

#include <memory>
#include <vector>

class FloatingPanel;
class PanelMenus;
class QAction;
class StatusItem;

/// The root of the program: it owns the models for the life of the process, builds the panel, the
/// menus and the icon in the status bar, and keeps them in step.
class AppDelegate final
{
public:
    /// Makes the models, which load their data at once.
    explicit AppDelegate(Platform &platform);
    ~AppDelegate();

    AppDelegate(const AppDelegate &) = delete;
    AppDelegate &operator=(const AppDelegate &) = delete;

    /// Builds the panel and shows it; the icon in the status bar and the desktop's menu bar follow
    /// once the panel stands.
    void applicationDidFinishLaunching();

    /// Brings the panel forward, with the token of the start that asks for it, if one does.
    void showPanel(const StartupToken &token = {});
    void toggleFloating();
    /// Brings the panel forward with the about card over it.
    void showAbout();
    /// Brings the panel forward with the launcher settings over it.
    void showSettings();
    /// Takes the panel and the application chooser off the screen.
    void hide();
    /// Opens the launcher that the entry stands for. Nothing happens if it stands for none.
    void launchConfiguredItem(const MenuItem &sender);
    /// Ends the program.
    void quitApp();

    FloatingPanel &panel() { return *m_panel; }

    StatusItem &statusItem() { return *m_statusItem; }

    LauncherStore &launcherStore() { return m_launcherStore; }

    WindowPreferences &windowPreferences() { return m_windowPreferences; }

private:
    void makePanel();
    void makeMenus();
    std::vector<MenuItem> launcherItemsOfPanel() const;
    void perform(const MenuItem &item);
    void showOnDesktop();
    void configureStatusItem();
    void rebuildStatusMenu();
    void showCard(Published<bool> &other, Published<bool> &card);
    void observeWindowPreferences();

    Platform &m_platform;
    TextGestures m_textGestures;
    PanelApplicationChooser m_applicationChooser;
    SatchelStore m_store;
    LauncherStore m_launcherStore;
    WindowPreferences m_windowPreferences;
    std::unique_ptr<FloatingPanel> m_panel;
    PanelMenus *m_menus = nullptr; // the panel's
    std::unique_ptr<StatusItem> m_statusItem;
    QPointer<QAction> m_alwaysOnTopMenuItem; // of the status menu as it is now
    Cancellable m_preferencesCancellable;
    Cancellable m_launcherCancellable;
    WorkItem m_showingOnDesktop;
};
