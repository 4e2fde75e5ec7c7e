#pragma once

#include <QObject>
#include <QSize>

class QScreen;
class QWidget;

/// Keeps the size of a top-level window in points when the scale of its screen changes. X11 would
/// keep the size in pixels, and the content would no longer fit.
///
/// Also asks the window manager for sizes that are both whole points and whole pixels. At any other
/// size the last column or row of pixels is missing or lies outside the widget.
class PointSize final : public QObject
{
    Q_OBJECT

public:
    /// `window` must outlive this.
    explicit PointSize(QWidget &window);

    /// Resizes the window to `ideal` and limits it to `minimum`. In points.
    void setSizes(const QSize &ideal, const QSize &minimum);

    /// Call before giving the window another size because its own does not fit on the screen. When
    /// the scale changes, the window gets its own size back.
    void setSubstitute(const QSize &size);

    /// The smallest number of points, at most 10, that is a whole number of pixels at this scale.
    /// 1 if no such number exists.
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
    void resizeWindow();
    void syncWindowGeometry();
    void applySteps();

    QWidget &m_window;
    QSize m_ideal;
    QSize m_minimum;
    QSize m_size;        // not maximized
    QSize m_earlierSize; // the previous value of m_size
    QSize m_zoomedSize;  // at the last change of the scale
    QSize m_substitute;
    qreal m_scale;
    bool m_isRestoring = false; // ignores other sizes until restoreSize
    bool m_isOutdated = false;  // the scale changed while the window was maximized
};
