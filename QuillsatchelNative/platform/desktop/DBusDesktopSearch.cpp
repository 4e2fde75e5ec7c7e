#include "platform/desktop/DBusDesktopSearch.h"

#include "platform/SearchProvider.h"
#include "platform/desktop/RunnerAdaptor.h"
#include "platform/desktop/ShellSearchAdaptor.h"

#include <QDBusConnection>
#include <QDBusMessage>

namespace
{

using namespace Qt::StringLiterals;

// The provider owns the object, which leaves the bus when it is destroyed.
template <typename Adaptor>
void addObject(QDBusConnection &bus, const QString &path, SearchProvider &provider)
{
    auto *const object = new QObject(&provider);
    new Adaptor(*object, provider);
    bus.registerObject(path, object);
}

// Not QDBusConnection::registerService, which waits for the answer.
void requestName(const QDBusConnection &bus, const QString &name)
{
    constexpr uint DoNotQueue = 4;
    auto request =
        QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                       u"org.freedesktop.DBus"_s, u"RequestName"_s);
    request << name << DoNotQueue;
    bus.send(request);
}

} // namespace

void DBusDesktopSearch::begin(SearchProvider &provider)
{
    auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    addObject<ShellSearchAdaptor>(bus, u"/example/quillsatchel/Quillsatchel/SearchProvider"_s,
                                  provider);
    addObject<RunnerAdaptor>(bus, u"/example/quillsatchel/Quillsatchel/Runner"_s, provider);
    requestName(bus, u"example.quillsatchel.Quillsatchel"_s);
}
