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

    /// What the application must be given so that the desktop knows it by its announcement.
    const std::string &id() const { return m_id; }

    /// Withdraws the announcement: the application does not come.
    void withdraw();

private:
    struct Sequence;

    struct Delete {
        void operator()(Sequence *sequence) const;
    };

    explicit StartupNotification(std::unique_ptr<Sequence, Delete> sequence);

    std::unique_ptr<Sequence, Delete> m_sequence;
    std::string m_id;
};
