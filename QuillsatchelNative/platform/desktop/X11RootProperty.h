#pragma once

#include "support/Published.h"

#include <QAbstractNativeEventFilter>

#include <cstdint>
#include <string_view>

struct xcb_connection_t;

/// A property of the X root window that a program, such as a compositor, sets while it offers a
/// feature.
class X11RootProperty final : public ObservableObject, private QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    /// Needs the QGuiApplication.
    explicit X11RootProperty(std::string_view name);

    /// Whether the property exists, with any value. Follows changes. Always false without X11.
    Published<bool> isSet { this, false };

    /// The property's atom.
    std::uint32_t atom() const { return m_atom; }

private:
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    void watch();
    bool exists() const;

    xcb_connection_t *m_connection; // null if Qt does not run on X11
    std::uint32_t m_atom = 0;
};
