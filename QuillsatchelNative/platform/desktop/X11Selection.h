#pragma once

#include "support/Published.h"

#include <QAbstractNativeEventFilter>

#include <cstdint>
#include <string_view>

struct xcb_connection_t;

/// An X selection that a program, such as a compositor or a tray, owns while it runs.
class X11Selection final : public ObservableObject, private QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    /// Needs the QGuiApplication.
    explicit X11Selection(std::string_view name);

    /// Whether such a program runs. Follows changes. Always false without X11.
    Published<bool> isOwned { this, false };

private:
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    void watch();
    bool hasOwner() const;

    xcb_connection_t *m_connection; // null if Qt does not run on X11
    std::uint32_t m_atom = 0;
    std::uint8_t m_event = 0; // 0 if the server does not report owners
};
