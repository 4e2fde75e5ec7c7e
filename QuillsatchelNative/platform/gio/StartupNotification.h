#pragma once

#include <gio/gdesktopappinfo.h>

#include <memory>
#include <optional>
#include <string>

/// Startup notification on X11: the desktop shows that an application is starting, and its window
/// gets the focus as a result of the user's click. The application itself ends the notification.
/// Uses a separate connection to the X server.
class StartupNotification
{
public:
    /// Begins the notification of `application`; none without an X server.
    static std::optional<StartupNotification> begin(GDesktopAppInfo *application);

    StartupNotification(StartupNotification &&) noexcept;
    StartupNotification &operator=(StartupNotification &&) noexcept;
    ~StartupNotification();

    /// The startup id to pass to the application.
    std::string id() const;

    /// Ends the notification because the launch failed.
    void complete();

private:
    class Sequence;

    explicit StartupNotification(std::unique_ptr<Sequence> sequence);

    std::unique_ptr<Sequence> m_sequence;
};
