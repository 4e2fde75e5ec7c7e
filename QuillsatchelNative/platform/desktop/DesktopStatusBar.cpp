#include "platform/desktop/DesktopStatusBar.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>

#include <chrono>

namespace
{

using namespace Qt::StringLiterals;

constexpr std::chrono::seconds HostDelay(3);

QString watcherName()
{
    return u"org.kde.StatusNotifierWatcher"_s;
}

QString watcherPath()
{
    return u"/StatusNotifierWatcher"_s;
}

} // namespace

DesktopStatusBar::DesktopStatusBar(MainQueue &mainQueue)
    : m_mainQueue(mainQueue)
{
}

DesktopStatusBar::~DesktopStatusBar()
{
    m_hostWait.cancel();
}

void DesktopStatusBar::begin()
{
    watchBus();
    m_tray.emplace("_NET_SYSTEM_TRAY_S0");
    m_trayCancellable = m_tray->isOwned.sink([this](bool isOwned) { followTray(isOwned); });
}

// Qt looks for the same name, but only when it has created a menu bar.
bool DesktopStatusBar::hasMenuBar() const
{
    const auto *const bus = QDBusConnection::sessionBus().interface();
    return bus && bus->isServiceRegistered(u"com.canonical.AppMenu.Registrar"_s);
}

void DesktopStatusBar::watchBus()
{
    auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    auto *const watcher =
        new QDBusServiceWatcher(watcherName(), bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            &DesktopStatusBar::askForHost);
    for (const auto &signal :
         { u"StatusNotifierHostRegistered"_s, u"StatusNotifierHostUnregistered"_s }) {
        bus.connect(watcherName(), watcherPath(), watcherName(), signal, this, SLOT(askForHost()));
    }
    askForHost();
}

// Without a host, the watcher accepts icons that no panel shows.
void DesktopStatusBar::askForHost()
{
    auto question = QDBusMessage::createMethodCall(watcherName(), watcherPath(),
                                                   u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    question.setAutoStartService(false);
    question << watcherName() << u"IsStatusNotifierHostRegistered"_s;
    auto *const call =
        new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this, call] {
        const QDBusPendingReply<QDBusVariant> reply = *call;
        m_hasHost = reply.isValid() && reply.value().variant().toBool();
        call->deleteLater();
        render();
    });
}

// Desktop panels that have both begin their X11 tray first. If the icon is created between the
// two, Qt finds the host, although the kind was embedded.
void DesktopStatusBar::followTray(bool isOwned)
{
    m_hostWait.cancel();
    m_canEmbed = false;
    if (isOwned) {
        m_hostWait = m_mainQueue.asyncAfter(HostDelay, [this] {
            m_canEmbed = true;
            render();
        });
    }
    render();
}

void DesktopStatusBar::render()
{
    const auto now = m_hasHost ? Kind::notifier : m_canEmbed ? Kind::embedded : Kind::none;
    if (now != kind.get())
        kind.set(now);
}
