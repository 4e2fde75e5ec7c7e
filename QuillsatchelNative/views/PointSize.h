#pragma once

#include <QObject>
#include <QSize>

class QScreen;
class QWidget;

/// Keeps the size of a top-level window the same in points while the scale of its screen changes.
/// X11 keeps a window's size in pixels instead, and the contents would no longer fit.
///
/// It also asks the window manager for sizes that are whole points and whole pixels at once. At any
/// other size the last column or row of pixels lies beyond the widget, or is missing.
class PointSize final : public QObject
{
    Q_OBJECT

public:
    /// `window` must outlive this.
    explicit PointSize(QWidget &window);

    /// Gives the window the size `ideal`. The user can make it no smaller than `least`. In points.
    void setSizes(const QSize &ideal, const QSize &least);

    /// The window is about to take this size because its own does not fit on the screen. At the
    /// next scale it gets its own size again.
    void setSubstitute(const QSize &size);

    /// The smallest number of points, up to 10, that is a whole number of pixels at this scale.
    /// 1 if there is none.
    static int stepAt(qreal scale);

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void watch(const QScreen &screen);
    void rememberSize();
    void followState();
    void leaveZoom();
    void followScale();
    void restoreSizeLater();
    void restoreSize();
    void adoptWindowFrame();
    void renderSteps();

    QWidget &m_window;
    QSize m_ideal;
    QSize m_least;
    QSize m_size;        // while the window is not maximized
    QSize m_earlierSize; // before the last change of it
    QSize m_zoomedSize;  // when the scale changed last
    QSize m_substitute;
    qreal m_scale;
    bool m_isRestoring = false; // the window has another size meanwhile
    bool m_isOutdated = false;  // the scale changed while the window was maximized
};
