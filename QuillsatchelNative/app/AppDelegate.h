#pragma once

#include "app/MenuItem.h"
#include "app/TextGestures.h"
#include "launchers/LauncherStore.h"
#include "library/NodeSearchProvider.h"
#include "library/SatchelStore.h"
#include "platform/Platform.h"
#include "preferences/WindowPreferences.h"
#include "views/PanelApplicationChooser.h"

#include <memory>
#include <vector>

class FloatingPanel;
class PanelMenus;
class QuillsatchelView;
class StatusItem;

/// The root of the program: owns the models, builds the panel, the menus and the tray icon, and
/// performs the commands of the menus.
class AppDelegate final
{
public:
    /// Creates the models, which load their data immediately. `platform` must outlive the delegate.
    explicit AppDelegate(Platform &platform);
    ~AppDelegate();

    AppDelegate(const AppDelegate &) = delete;
    AppDelegate &operator=(const AppDelegate &) = delete;

    /// Builds and shows the panel. The tray icon, the global menu bar and the results for the
    /// desktop's search follow after the first frame, or after five seconds if nothing of the panel
    /// is visible.
    void applicationDidFinishLaunching();

    /// Brings the panel to the front, with the activation token of the launch that asks for it.
    void showPanel(const StartupToken &token = {});
    void toggleFloating();
    /// Brings the panel to the front with the about card.
    void showAbout();
    /// Brings the panel to the front with the launcher settings.
    void showSettings();
    /// Brings the panel to the front with the node, ready to be edited.
    void showNode(QUuid tabID, QUuid blockID);
    /// Brings the panel to the front with the find card.
    void find(const QString &query);
    /// Hides the panel and closes the application chooser.
    void hide();
    /// Opens the launcher in the slot of `sender`. Does nothing if it has no slot.
    void launchConfiguredItem(const MenuItem &sender);
    void quitApp();

private:
    void makePanel();
    void makeMenus();
    std::vector<MenuItem> launcherItemsOfPanel() const;
    void perform(const MenuItem &item);
    void showOnDesktop();
    void configureStatusItem();
    void answerDesktopSearch();
    void showCard(Published<bool> &other, Published<bool> &card);

    Platform &m_platform;
    TextGestures m_textGestures;
    PanelApplicationChooser m_applicationChooser;
    SatchelStore m_store;
    NodeSearchProvider m_searchProvider;
    LauncherStore m_launcherStore;
    WindowPreferences m_windowPreferences;
    std::unique_ptr<FloatingPanel> m_panel;
    QuillsatchelView *m_view = nullptr; // the panel's
    PanelMenus *m_menus = nullptr;      // the panel's
    std::unique_ptr<StatusItem> m_statusItem;
    WorkItem m_showingOnDesktop;
};
