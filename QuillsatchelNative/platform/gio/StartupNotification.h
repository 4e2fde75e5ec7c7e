#pragma once

#include <gio/gdesktopappinfo.h>

#include <memory>
#include <optional>
#include <string>

/// Tells an X11 desktop that an application is on its way, so that it shows that something happens
/// and gives the window the focus that the user's click deserves. The application says itself when
/// it is there. Has a connection of its own to the display.
class StartupNotification
{
public:
    /// Announces `application`; none where there is no X display.
    static std::optional<StartupNotification> begin(GDesktopAppInfo *application);

    StartupNotification(StartupNotification &&) noexcept;
    StartupNotification &operator=(StartupNotification &&) noexcept;
    ~StartupNotification();

    /// What the application must be given so that the desktop knows it by its announcement.
    std::string id() const;

    /// Withdraws the announcement: the application does not come.
    void withdraw();

private:
    class Sequence;

    explicit StartupNotification(std::unique_ptr<Sequence> sequence);

    std::unique_ptr<Sequence> m_sequence;
};
