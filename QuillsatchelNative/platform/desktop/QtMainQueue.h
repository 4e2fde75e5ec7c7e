#pragma once

#include "platform/MainQueue.h"

#include <QObject>

/// The main queue on Qt's event loop. Create it on the main thread. Destroying it drops pending
/// work.
class QtMainQueue final : public MainQueue
{
public:
    void async(std::function<void()> work) override;
    WorkItem asyncAfter(std::chrono::milliseconds delay, std::function<void()> work) override;

private:
    QObject m_mainThread;
};
