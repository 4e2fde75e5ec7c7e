#include "views/RenderScheduler.h"

#include "support/ObservableObject.h"

#include <QPointer>

#include <utility>

RenderScheduler::RenderScheduler(MainQueue &mainQueue, std::function<void()> render)
    : m_mainQueue(mainQueue)
    , m_render(std::move(render))
{
}

void RenderScheduler::observe(const ObservableObject &model)
{
    connect(&model, &ObservableObject::objectWillChange, this, &RenderScheduler::schedule);
}

void RenderScheduler::schedule()
{
    if (std::exchange(m_isScheduled, true))
        return;
    m_mainQueue.async([scheduler = QPointer(this)] {
        if (scheduler)
            scheduler->renderNow();
    });
}

void RenderScheduler::renderNow()
{
    m_isScheduled = false;
    m_render();
}
