#include "views/PointSize.h"

#include <QBackingStore>
#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>
#include <QMoveEvent>
#include <QResizeEvent>
#include <QScreen>
#include <QWidget>
#include <QWindow>

#include <cmath>
#include <utility>

namespace
{

constexpr int LongestStep = 10; // points

/// The smallest length of at least `least` that is whole steps away from `ideal`.
int inSteps(int least, int ideal, int step)
{
    return least + (((ideal - least) % step) + step) % step;
}

/// Window managers shorten what is not whole steps long.
bool isNear(const QSize &size, const QSize &other)
{
    return std::abs(size.width() - other.width()) < LongestStep &&
           std::abs(size.height() - other.height()) < LongestStep;
}

} // namespace

PointSize::PointSize(QWidget &window)
    : m_window(window)
    , m_scale(window.devicePixelRatio())
{
    m_window.installEventFilter(this);
    for (const auto *const screen : QGuiApplication::screens())
        watch(*screen);
    connect(qGuiApp, &QGuiApplication::screenAdded, this,
            [this](const QScreen *screen) { watch(*screen); });
}

// Qt 6.4 tells of a new scale through the screens only.
void PointSize::watch(const QScreen &screen)
{
    connect(&screen, &QScreen::geometryChanged, this, &PointSize::followScale);
    connect(&screen, &QScreen::logicalDotsPerInchChanged, this, &PointSize::followScale);
}

void PointSize::setSizes(const QSize &ideal, const QSize &least)
{
    m_ideal = ideal;
    m_least = least;
    m_size = ideal;
    m_window.setMinimumSize(least);
    m_window.resize(ideal);
    renderSteps();
}

int PointSize::stepAt(qreal scale)
{
    for (int step = 1; step <= LongestStep; ++step) {
        if (std::abs(step * scale - std::round(step * scale)) < 0.001)
            return step;
    }
    return 1;
}

bool PointSize::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::WinIdChange)
        renderSteps();
    else if (event->type() == QEvent::WindowStateChange)
        followState();
    else if (event->type() == QEvent::Resize)
        rememberSize();
    return QObject::eventFilter(object, event);
}

void PointSize::rememberSize()
{
    followScale();
    leaveZoom();
    const QSize size = m_window.size();
    if (m_isRestoring || m_window.isMaximized() || size == m_size || isNear(size, m_substitute))
        return;
    m_substitute = {};
    m_earlierSize = std::exchange(m_size, size);
}

// Some window managers tell the maximized size before the new state.
void PointSize::followState()
{
    if (m_window.isMaximized() && m_size == m_window.screen()->availableSize())
        m_size = m_earlierSize;
    leaveZoom();
}

// The window manager places the window first: a size given before that would come with a place.
void PointSize::leaveZoom()
{
    if (!m_isOutdated || m_window.isMaximized() || m_window.size() == m_zoomedSize)
        return;
    m_isOutdated = false;
    restoreSizeLater();
}

void PointSize::followScale()
{
    const qreal scale = m_window.devicePixelRatio();
    if (std::exchange(m_scale, scale) != scale && m_window.windowHandle())
        restoreSizeLater();
}

// Qt is still busy with the change: it tells screens and windows one after the other.
void PointSize::restoreSizeLater()
{
    m_isRestoring = true;
    QMetaObject::invokeMethod(this, &PointSize::restoreSize, Qt::QueuedConnection);
}

void PointSize::restoreSize()
{
    adoptWindowFrame();
    renderSteps();
    m_isOutdated = m_window.isMaximized();
    m_zoomedSize = m_window.size();
    if (!m_isOutdated)
        m_window.resize(m_size);
    if (auto *const store = m_window.backingStore())
        store->resize(m_window.size());
    m_window.update();
    m_isRestoring = false;
}

// Qt 6.4 changes the frame of the window in points, but tells neither the widget nor its backing
// store, which sees no need to change.
void PointSize::adoptWindowFrame()
{
    auto *const window = m_window.windowHandle();
    QMoveEvent move(window->position(), m_window.pos());
    QResizeEvent resize(window->size(), m_window.size());
    QCoreApplication::sendEvent(window, &move);
    QCoreApplication::sendEvent(window, &resize);
}

void PointSize::setSubstitute(const QSize &size)
{
    m_substitute = size;
}

void PointSize::renderSteps()
{
    if (!m_window.windowHandle())
        return; // setting the same steps again would not tell the window of them
    const int step = stepAt(m_window.devicePixelRatio());
    m_window.setMinimumSize(inSteps(m_least.width(), m_ideal.width(), step),
                            inSteps(m_least.height(), m_ideal.height(), step));
    m_window.setBaseSize(m_ideal.width() % step, m_ideal.height() % step);
    m_window.setSizeIncrement(step, step);
}
