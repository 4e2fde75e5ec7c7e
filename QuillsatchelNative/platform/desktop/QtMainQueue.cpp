#include "platform/desktop/QtMainQueue.h"

#include <QTimer>

void QtMainQueue::async(std::function<void()> work)
{
    QMetaObject::invokeMethod(&m_mainThread, std::move(work), Qt::QueuedConnection);
}

WorkItem QtMainQueue::asyncAfter(std::chrono::milliseconds delay, std::function<void()> work)
{
    WorkItem item(std::move(work));
    QTimer::singleShot(delay, Qt::PreciseTimer, &m_mainThread, [item] { item.run(); });
    return item;
}
