#pragma once

#include "platform/WindowSystem.h"
#include "platform/desktop/X11RootProperty.h"
#include "platform/desktop/X11Selection.h"
#include "support/Cancellable.h"

#include <cstdint>
#include <string>

struct xcb_client_message_event_t;
struct xcb_connection_t;

/// The X11 window manager (EWMH) and compositor. On Wayland it only passes activation tokens to Qt
/// and assumes a compositor. Needs the QGuiApplication.
class X11WindowSystem final : public WindowSystem
{
    Q_OBJECT

public:
    X11WindowSystem();

    void showOnAllDesktops(QWindow &window) override;
    void blurBehind(QWindow &window, const QSize &size, int radius) override;
    void activate(QWindow &window, const StartupToken &token) override;

private:
    void followCompositor();
    void requestActivation(QWindow &window, const std::string &startupID);
    void endStartup(const QWindow &window, const std::string &startupID);
    void sendToRoot(const xcb_client_message_event_t &message, std::uint32_t eventMask);

    xcb_connection_t *m_connection; // Qt's; null if Qt does not run on X11
    std::uint32_t m_desktopAtom = 0;
    X11Selection m_compositor { "_NET_WM_CM_S0" };
    // Compositors set it on the root window, programs on windows that need blur.
    X11RootProperty m_blur { "_KDE_NET_WM_BLUR_BEHIND_REGION" };
    X11RootProperty m_windowManager { "_NET_SUPPORTING_WM_CHECK" };
    Cancellable m_compositorCancellable;
    Cancellable m_blurCancellable;
    Cancellable m_windowManagerCancellable;
};
