#pragma once

#include "platform/MainQueue.h"
#include "platform/StatusBar.h"
#include "platform/desktop/X11Selection.h"

#include <QObject>

#include <optional>

/// The desktop's tray: a StatusNotifier host on the session bus, or else the X11 system tray. Main
/// thread only.
class DesktopStatusBar final : public StatusBar
{
    Q_OBJECT

public:
    explicit DesktopStatusBar(MainQueue &mainQueue);

    DesktopStatusBar(const DesktopStatusBar &) = delete;
    DesktopStatusBar &operator=(const DesktopStatusBar &) = delete;

    ~DesktopStatusBar() override;

    void begin() override;
    bool hasMenuBar() const override;

private:
    Q_SLOT void askForHost(); // a slot, as QDBusConnection::connect needs its name
    void watchBus();
    void followTray(bool isOwned);
    void render();

    MainQueue &m_mainQueue;
    WorkItem m_hostWait;
    std::optional<X11Selection> m_tray;
    Cancellable m_trayCancellable;
    bool m_hasHost = false;
    bool m_canEmbed = false;
};
