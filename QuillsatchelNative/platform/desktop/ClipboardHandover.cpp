#include "platform/desktop/ClipboardHandover.h"

#include "platform/desktop/X11Connection.h"
#include "platform/desktop/X11SelectionReader.h"

#include <QAbstractNativeEventFilter>
#include <QClipboard>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QSocketNotifier>
#include <QTimer>
#include <xcb/xcb.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <utility>

namespace
{

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds ResponseTimeout = 300ms; // after the last request
constexpr auto TransferTimeout = 3s;                         // in total

bool isTransferEvent(const xcb_generic_event_t &event)
{
    const int type = event.response_type & 0x7F;
    const auto &property = reinterpret_cast<const xcb_property_notify_event_t &>(event);
    return type == XCB_SELECTION_REQUEST ||
           (type == XCB_PROPERTY_NOTIFY && property.state == XCB_PROPERTY_DELETE);
}

/// Calls a function for each request to this process as selection owner, and for each property that
/// a requestor deletes to get the next chunk of an INCR transfer.
class RequestWatch final : private QAbstractNativeEventFilter
{
public:
    explicit RequestWatch(std::function<void()> onRequest)
        : m_onRequest(std::move(onRequest))
    {
        qGuiApp->installNativeEventFilter(this); // until it is destroyed
    }

private:
    bool nativeEventFilter(const QByteArray &eventType, void *message,
                           qintptr * /*result*/) override
    {
        if (eventType == "xcb_generic_event_t" &&
            isTransferEvent(*static_cast<const xcb_generic_event_t *>(message)))
            m_onRequest();
        return false;
    }

    std::function<void()> m_onRequest;
};

// The manager fetches the text from Qt before it answers, so Qt must handle its requests. Each
// request restarts the timeout.
bool isSavedByManager()
{
    X11SelectionReader manager("CLIPBOARD_MANAGER", ResponseTimeout); // for blocking calls
    manager.request("SAVE_TARGETS");
    bool isAnswered = false;
    QEventLoop loop;
    const QSocketNotifier notifier(manager.descriptor(), QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, &loop, [&] {
        isAnswered = manager.hasAnswer();
        if (isAnswered)
            loop.quit();
    });
    QTimer timer; // each request restarts it, which MainQueue cannot do
    QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
    timer.start(ResponseTimeout);
    const QDeadlineTimer end(TransferTimeout);
    const RequestWatch watch([&timer, &end] {
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(end.remainingTimeAsDuration());
        timer.start(std::min(ResponseTimeout, left));
    });
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    return isAnswered;
}

} // namespace

void ClipboardHandover::finish()
{
    if (!X11Connection::current())
        return;
    auto &clipboard = *QGuiApplication::clipboard();
    if (clipboard.ownsSelection()) // managers do not save it, but Qt would ask them to
        clipboard.clear(QClipboard::Selection);
    if (clipboard.ownsClipboard() && !isSavedByManager())
        clipboard.clear();
}
