#pragma once

#include "app/MenuMirror.h"
#include "launchers/LauncherStore.h"
#include "platform/StatusBar.h"
#include "preferences/WindowPreferences.h"
#include "support/Cancellable.h"

#include <QMenu>
#include <QSystemTrayIcon>

#include <optional>

/// The tray icon, in its own colours, and its menu, which follows the preferences and launchers.
/// Appears once the desktop has a tray, however late, and reappears with the tray.
class StatusItem final : public QObject
{
    Q_OBJECT

public:
    /// `perform` receives the chosen entries. The other arguments must outlive the item.
    StatusItem(StatusBar &statusBar, const WindowPreferences &windowPreferences,
               const LauncherStore &launcherStore, MenuMirror::Perform perform);

    ~StatusItem() override;

    /// Starts following the tray. Until there is one, no menu is built.
    void begin();

    /// Whether the user can see the icon.
    bool isShown() const;

private:
    void show(StatusBar::Kind kind);
    void observeModels();
    void rebuildStatusMenu();
    void activate(QSystemTrayIcon::ActivationReason reason);

    StatusBar &m_statusBar;
    const WindowPreferences &m_windowPreferences;
    const LauncherStore &m_launcherStore;
    MenuMirror::Perform m_perform;
    QMenu m_menu; // never replaced: trays keep showing the menu object they got first
    QAction *m_alwaysOnTopMenuItem = nullptr; // the current one in `m_menu`
    std::optional<QSystemTrayIcon> m_icon;
    StatusBar::Kind m_kind = StatusBar::Kind::none; // of `m_icon`
    Cancellable m_kindCancellable;
    Cancellable m_launcherCancellable;
    Cancellable m_preferencesCancellable;
};
