#pragma once

#include "platform/MainQueue.h"

#include <QObject>

#include <functional>

class ObservableObject;

/// Brings a view in line with the models it observes: however many changes they announce in one
/// turn of the event loop, the view is rendered once, on the next.
class RenderScheduler final : public QObject
{
    Q_OBJECT

public:
    /// `render` must not outlive what it uses: make the scheduler a member of the view.
    RenderScheduler(MainQueue &mainQueue, std::function<void()> render);

    /// From now on the model's announcements lead to a render. Either may go first.
    void observe(const ObservableObject &model);
    /// For a change of the view's own state.
    void schedule();

private:
    void renderNow();

    MainQueue &m_mainQueue;
    std::function<void()> m_render;
    bool m_isScheduled = false;
};
