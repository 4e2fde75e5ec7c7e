#pragma once

#include "platform/WindowSystem.h"

#include <QAbstractNativeEventFilter>

#include <cstdint>
#include <string>

struct xcb_client_message_event_t;
struct xcb_connection_t;

/// The X server's window manager (EWMH) and compositor. On another window system, such as pure
/// Wayland, it does no more than hand Qt the tokens of starts, and takes translucency for granted.
/// Needs the QGuiApplication.
class X11WindowSystem final : public WindowSystem, private QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    X11WindowSystem();

    void showOnAllDesktops(QWindow &window) override;
    void activate(QWindow &window, const StartupToken &token) override;

private:
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    void watchCompositor();
    bool hasCompositor() const;
    void requestActivation(QWindow &window, const std::string &startupID);
    void endStartup(const QWindow &window, const std::string &startupID);
    void sendToRoot(const xcb_client_message_event_t &message, std::uint32_t eventMask);

    xcb_connection_t *m_connection = nullptr; // Qt's own; none when Qt does not run on X11
    std::uint32_t m_root = 0;
    std::uint32_t m_compositorSelection = 0; // owned by the compositor as long as one runs
    std::uint32_t m_desktopAtom = 0;
    std::uint8_t m_selectionEvent = 0; // 0: the server does not tell of compositors
};
