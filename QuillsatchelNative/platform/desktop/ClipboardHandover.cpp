#include "platform/desktop/ClipboardHandover.h"

#include "platform/desktop/X11Connection.h"
#include "platform/desktop/X11SelectionReader.h"

#include <QClipboard>
#include <QEventLoop>
#include <QGuiApplication>
#include <QSocketNotifier>
#include <QTimer>

#include <chrono>

namespace
{

using namespace std::chrono_literals;

constexpr auto Patience = 300ms;

// The manager fetches the text from Qt before it answers, so Qt must handle its requests.
bool isSavedByManager()
{
    X11SelectionReader manager("CLIPBOARD_MANAGER", Patience);
    manager.request("SAVE_TARGETS");
    bool isAnswered = false;
    QEventLoop loop;
    const QSocketNotifier notifier(manager.descriptor(), QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, &loop, [&] {
        isAnswered = manager.hasAnswer();
        if (isAnswered)
            loop.quit();
    });
    QTimer::singleShot(Patience, &loop, &QEventLoop::quit);
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
