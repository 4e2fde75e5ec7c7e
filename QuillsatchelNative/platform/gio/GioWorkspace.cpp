#include "platform/gio/GioWorkspace.h"

#include "platform/MainQueue.h"
#include "platform/gio/ApplicationIcon.h"
#include "platform/gio/DesktopEntry.h"
#include "platform/gio/InstalledApplications.h"
#include "platform/gio/Launch.h"
#include "support/WebAddress.h"

#include <QIcon>

#include <utility>

namespace
{

// For desktops that set no theme. Every lookup ends in hicolor, which has only the icons that
// applications install.
void prepareIconTheme()
{
    const auto theme = QIcon::fallbackThemeName();
    if (theme.isEmpty() || theme == QLatin1String("hicolor"))
        QIcon::setFallbackThemeName(QStringLiteral("Adwaita"));
}

} // namespace

GioWorkspace::GioWorkspace(MainQueue &mainQueue)
    : m_mainQueue(mainQueue)
{
    prepareIconTheme();
}

GioWorkspace::~GioWorkspace()
{
    constexpr std::chrono::seconds LaunchTimeout(1);
    m_tasks.waitFor(LaunchTimeout);
    m_stop.request_stop();
}

void GioWorkspace::open(const WebAddress &address)
{
    m_tasks.start([text = address.absoluteString(), scheme = std::string(address.scheme()),
                   stop = m_stop.get_token()] { Launch::address(text, scheme, stop); });
}

void GioWorkspace::openApplication(const std::string &path)
{
    m_tasks.start([path, stop = m_stop.get_token()] { Launch::application(path, stop); });
}

std::optional<ApplicationNames> GioWorkspace::applicationNames(const std::string &path)
{
    const auto entry = DesktopEntry::open(path);
    return entry ? std::optional(entry->names()) : std::nullopt;
}

QImage GioWorkspace::applicationIcon(const std::string &path, double size, double scale)
{
    const auto entry = DesktopEntry::open(path);
    return ApplicationIcon::picture(entry ? entry->icon() : std::string(), size, scale);
}

void GioWorkspace::listApplications(std::function<void(const std::vector<Application> &)> receive)
{
    m_tasks.start(
        [&mainQueue = m_mainQueue, receive = std::move(receive), stop = m_stop.get_token()] {
            auto applications = InstalledApplications::list(InstalledApplications::folders(), stop);
            mainQueue.async([receive, stop, applications = std::move(applications)] {
                if (!stop.stop_requested())
                    receive(applications);
            });
        });
}
