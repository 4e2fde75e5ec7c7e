#include "views/FirstPaint.h"

#include "platform/MainQueue.h"

#include <QEvent>
#include <QPointer>
#include <QWidget>

#include <utility>

namespace
{

class FirstPaint final : public QObject
{
public:
    FirstPaint(QWidget &widget, std::function<void()> onPaint)
        : QObject(&widget)
        , m_onPaint(std::move(onPaint))
    {
        widget.installEventFilter(this);
    }

    bool eventFilter(QObject *widget, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            widget->removeEventFilter(this);
            m_onPaint();
            deleteLater();
        }
        return false;
    }

private:
    std::function<void()> m_onPaint;
};

} // namespace

void afterFirstPaint(QWidget &widget, MainQueue &mainQueue, std::function<void()> work)
{
    const auto runUnlessDestroyed = [painted = QPointer(&widget), work = std::move(work)] {
        if (painted)
            work();
    };
    new FirstPaint(widget,
                   [&mainQueue, runUnlessDestroyed] { mainQueue.async(runUnlessDestroyed); });
}
