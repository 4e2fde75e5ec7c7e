#include "platform/gio/GioWorkspace.h"

#include "platform/MainQueue.h"
#include "platform/gio/ApplicationIcon.h"
#include "platform/gio/DesktopEntry.h"
#include "platform/gio/InstalledApplications.h"
#include "platform/gio/Launch.h"
#include "support/WebAddress.h"

#include <QIcon>

#include <system_error>
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
    waitForTasks(LaunchTimeout);
    m_stop.request_stop();
}

void GioWorkspace::open(const WebAddress &address)
{
    runInBackground([text = address.absoluteString(), scheme = std::string(address.scheme()),
                     stop = m_stop.get_token()] { Launch::address(text, scheme, stop); });
}

void GioWorkspace::openApplication(const std::string &path)
{
    runInBackground([path, stop = m_stop.get_token()] { Launch::application(path, stop); });
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
    runInBackground(
        [&mainQueue = m_mainQueue, receive = std::move(receive), stop = m_stop.get_token()] {
            auto applications = InstalledApplications::list(InstalledApplications::folders(), stop);
            mainQueue.async([receive, stop, applications = std::move(applications)] {
                if (!stop.stop_requested())
                    receive(applications);
            });
        });
}

// Not on a thread of Qt: GLib would leave later events to its event loop, which never runs. Does
// nothing if the system refuses a thread.
void GioWorkspace::runInBackground(std::function<void()> task)
{
    std::erase_if(m_tasks, [](const std::future<void> &earlier) {
        return earlier.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
    });
    try {
        m_tasks.push_back(std::async(std::launch::async, std::move(task)));
    } catch (const std::system_error &) {
        return;
    }
}

void GioWorkspace::waitForTasks(std::chrono::milliseconds timeout) const
{
    const auto end = std::chrono::steady_clock::now() + timeout;
    for (const auto &task : m_tasks)
        task.wait_until(end);
}
