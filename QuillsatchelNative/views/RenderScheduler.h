#pragma once

#include "platform/MainQueue.h"

#include <QObject>

#include <functional>

class ObservableObject;

/// Renders a view after changes of the models that it observes. All changes of one iteration of the
/// event loop lead to a single call in the next one.
class RenderScheduler final : public QObject
{
    Q_OBJECT

public:
    /// Make the scheduler a member of the view, so that `render` is never called after the view is
    /// gone.
    RenderScheduler(MainQueue &mainQueue, std::function<void()> render);

    /// Renders after every change of the model. Either may be destroyed first.
    void observe(const ObservableObject &model);
    /// Call when the view's own state changes.
    void schedule();

private:
    void renderNow();

    MainQueue &m_mainQueue;
    std::function<void()> m_render;
    bool m_isScheduled = false;
};
