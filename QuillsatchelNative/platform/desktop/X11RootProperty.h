#pragma once

#include "support/Published.h"

#include <QAbstractNativeEventFilter>

#include <cstdint>
#include <string_view>

struct xcb_connection_t;

/// A property of the X server's root window by which a program, such as a compositor, tells what
/// it offers: it sets the property for as long as it does.
class X11RootProperty final : public ObservableObject, private QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    /// Needs the QGuiApplication.
    explicit X11RootProperty(std::string_view name);

    /// Whether the property is there, with any value. Follows it; never true on another window
    /// system.
    Published<bool> isSet { this, false };

    /// The server's number for the property's name.
    std::uint32_t atom() const { return m_atom; }

private:
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    void watch();
    bool isThere() const;

    xcb_connection_t *m_connection; // none when Qt does not run on X11
    std::uint32_t m_atom = 0;
};
