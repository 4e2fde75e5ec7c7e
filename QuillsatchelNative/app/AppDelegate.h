#pragma once

#include "launchers/LauncherStore.h"
#include "library/SatchelStore.h"
#include "platform/Platform.h"
#include "preferences/WindowPreferences.h"
#include "support/Cancellable.h"
#include "views/PanelApplicationChooser.h"

#include <memory>

class FloatingPanel;

/// The root of the program: it owns the models for the life of the process, builds the panel and
/// keeps the two in step.
class AppDelegate final
{
public:
    /// Makes the models, which load their data at once.
    explicit AppDelegate(Platform &platform = desktopPlatform());
    ~AppDelegate();

    AppDelegate(const AppDelegate &) = delete;
    AppDelegate &operator=(const AppDelegate &) = delete;

    /// Builds the panel and shows it.
    void applicationDidFinishLaunching();

    /// Writes what is still to be written. The program may go on all the same.
    void applicationWillTerminate() { m_store.savePendingChanges(); }

    /// Brings the panel forward.
    void showPanel();
    /// Brings the panel forward with the about card over it.
    void showAbout();
    /// Brings the panel forward with the launcher settings over it.
    void showSettings();

    FloatingPanel &panel() { return *m_panel; }

    WindowPreferences &windowPreferences() { return m_windowPreferences; }

private:
    void makePanel();
    void showCard(Published<bool> &other, Published<bool> &card);
    void observeWindowPreferences();

    Platform &m_platform;
    PanelApplicationChooser m_applicationChooser;
    SatchelStore m_store;
    LauncherStore m_launcherStore;
    WindowPreferences m_windowPreferences;
    std::unique_ptr<FloatingPanel> m_panel;
    Cancellable m_preferencesCancellable;
};
