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

constexpr int MaximumStep = 10; // points

/// The smallest length of at least `minimum` that differs from `ideal` by whole steps.
int roundUpToStep(int minimum, int ideal, int step)
{
    return minimum + (((ideal - minimum) % step) + step) % step;
}

/// Window managers round sizes down to whole steps.
bool isNear(const QSize &size, const QSize &other)
{
    return std::abs(size.width() - other.width()) < MaximumStep &&
           std::abs(size.height() - other.height()) < MaximumStep;
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

// Qt 6.4 reports a new scale only through the screens. Queued, because Qt 6.11 applies it to the
// windows after it has told the screens.
void PointSize::watch(const QScreen &screen)
{
    connect(&screen, &QScreen::geometryChanged, this, &PointSize::followScale,
            Qt::QueuedConnection);
    connect(&screen, &QScreen::logicalDotsPerInchChanged, this, &PointSize::followScale,
            Qt::QueuedConnection);
}

void PointSize::setSizes(const QSize &ideal, const QSize &minimum)
{
    m_ideal = ideal;
    m_minimum = minimum;
    m_size = ideal;
    m_window.setMinimumSize(minimum);
    m_window.resize(ideal);
    applySteps();
}

int PointSize::stepAt(qreal scale)
{
    for (int step = 1; step <= MaximumStep; ++step) {
        if (std::abs(step * scale - std::round(step * scale)) < 0.001)
            return step;
    }
    return 1;
}

bool PointSize::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::WinIdChange)
        applySteps();
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

// Some window managers announce the maximized size before the maximized state.
void PointSize::followState()
{
    if (m_window.isMaximized() && m_size == m_window.screen()->availableSize())
        m_size = m_earlierSize;
    leaveZoom();
}

// Waits until the window manager has placed the window: an earlier resize would also move it.
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

// Later, because Qt is still updating screens and windows one after the other.
void PointSize::restoreSizeLater()
{
    m_isRestoring = true;
    // Not MainQueue: Qt drops the call when the window is destroyed.
    QMetaObject::invokeMethod(this, &PointSize::restoreSize, Qt::QueuedConnection);
}

void PointSize::restoreSize()
{
    syncWindowGeometry();
    applySteps();
    m_isOutdated = m_window.isMaximized();
    m_zoomedSize = m_window.size();
    if (!m_isOutdated)
        resizeWindow();
    if (auto *const store = m_window.backingStore())
        store->resize(m_window.size());
    m_window.update();
    m_isRestoring = false;
}

// Sets both: in Qt 6.11 a hidden widget does not tell its window of a new size.
void PointSize::resizeWindow()
{
    m_window.resize(m_size);
    m_window.windowHandle()->resize(m_size);
}

// Qt 6.4 changes the window's geometry in points, but notifies neither the widget nor its backing
// store.
void PointSize::syncWindowGeometry()
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

void PointSize::applySteps()
{
    if (!m_window.windowHandle())
        return; // Qt would not pass on the same steps to the window later
    const int step = stepAt(m_window.devicePixelRatio());
    m_window.setMinimumSize(roundUpToStep(m_minimum.width(), m_ideal.width(), step),
                            roundUpToStep(m_minimum.height(), m_ideal.height(), step));
    m_window.setBaseSize(m_ideal.width() % step, m_ideal.height() % step);
    m_window.setSizeIncrement(step, step);
}
