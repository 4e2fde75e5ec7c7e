#include "FirstFrame.h"

#include <QEvent>
#include <QTimer>
#include <QWindow>

#include <cstdio>
#include <ctime>

namespace
{

long long nanoseconds(clockid_t clock)
{
    timespec now {};
    clock_gettime(clock, &now);
    return static_cast<long long>(now.tv_sec) * 1'000'000'000 + now.tv_nsec;
}

void printTimes()
{
    std::printf("%lld %lld\n", nanoseconds(CLOCK_MONOTONIC), nanoseconds(CLOCK_PROCESS_CPUTIME_ID));
    std::fflush(stdout);
}

class FirstFrame final : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *object, QEvent *event) override
    {
        const auto type = event->type();
        if (type != QEvent::Paint && type != QEvent::Expose && type != QEvent::UpdateRequest)
            return false;
        if (!static_cast<QWindow *>(object)->isExposed())
            return false;
        // The event handler paints and flushes, so the next turn is after that.
        object->removeEventFilter(this);
        QTimer::singleShot(0, this, [this] {
            printTimes();
            deleteLater();
        });
        return false;
    }
};

} // namespace

void announceFirstFrame(QWindow &window)
{
    window.installEventFilter(new FirstFrame(&window));
}
