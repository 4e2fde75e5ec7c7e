#include "platform/desktop/PlasmaClipboard.h"

#include "platform/desktop/BusText.h"

#include <QDBusConnection>
#include <QDBusMessage>

void PlasmaClipboard::setText(std::string_view text)
{
    using namespace Qt::StringLiterals;
    const auto contents = BusText::make(text);
    if (!contents)
        return;
    auto request =
        QDBusMessage::createMethodCall(u"org.kde.klipper"_s, u"/klipper"_s,
                                       u"org.kde.klipper.klipper"_s, u"setClipboardContents"_s);
    request.setAutoStartService(false);
    request << *contents;
    QDBusConnection::sessionBus().send(request);
}
