#include "platform/desktop/ClipboardHandover.h"

#include "platform/desktop/X11Connection.h"
#include "platform/desktop/X11SelectionReader.h"

#include <QAbstractNativeEventFilter>
#include <QClipboard>
#include <QEventLoop>
#include <QGuiApplication>
#include <QSocketNotifier>
#include <QTimer>
#include <xcb/xcb.h>

#include <chrono>
#include <functional>
#include <utility>

namespace
{

using namespace std::chrono_literals;

constexpr auto Patience = 300ms;

/// Calls a function for each request that this process serves as the owner of a selection.
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
        const auto *const event = static_cast<const xcb_generic_event_t *>(message);
        if (eventType == "xcb_generic_event_t" &&
            (event->response_type & 0x7F) == XCB_SELECTION_REQUEST)
            m_onRequest();
        return false;
    }

    std::function<void()> m_onRequest;
};

// The manager fetches the text from Qt before it answers, so Qt must handle its requests. Each of
// them shows that the manager is at work.
bool isSavedByManager()
{
    X11SelectionReader manager("CLIPBOARD_MANAGER", Patience); // asked once, never waited for
    manager.request("SAVE_TARGETS");
    bool isAnswered = false;
    QEventLoop loop;
    const QSocketNotifier notifier(manager.descriptor(), QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, &loop, [&] {
        isAnswered = manager.hasAnswer();
        if (isAnswered)
            loop.quit();
    });
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
    timer.start(Patience);
    const RequestWatch watch([&timer] { timer.start(Patience); });
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    return isAnswered;
}

} // namespace

void ClipboardHandover::finish()
{
    if (!X11Connection::current())
        return;
    auto &clipboard = *QGuiApplication::clipboard();
    if (clipboard.ownsSelection()) // managers keep none, but Qt would ask them
        clipboard.clear(QClipboard::Selection);
    if (clipboard.ownsClipboard() && !isSavedByManager())
        clipboard.clear();
}
