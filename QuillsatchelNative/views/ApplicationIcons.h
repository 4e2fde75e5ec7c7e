#pragma once

#include <QElapsedTimer>
#include <QImage>
#include <QObject>

#include <functional>
#include <string>
#include <unordered_map>

class MainQueue;
class Workspace;

/// A cache of application icons for a view. Each icon is loaded when it is first painted. Loading
/// stops after half a frame per iteration of the event loop, so that scrolling stays smooth.
class ApplicationIcons final : public QObject
{
    Q_OBJECT

public:
    /// `size` in points.
    ApplicationIcons(int size, Workspace &workspace, MainQueue &mainQueue, QObject *parent);

    /// Icons that were not loaded for lack of time can be loaded now: repaint.
    std::function<void()> onRepaint = [] {};

    /// The icon of the application whose desktop entry is at `path`, at `scale` pixels per point. A
    /// null pointer if it is not loaded yet, a null image if the application has none.
    const QImage *icon(const std::string &path, double scale);

private:
    bool hasTime();
    void renewTime();

    int m_size;
    Workspace &m_workspace;
    MainQueue &m_mainQueue;
    double m_scale = 0; // of the cached icons
    std::unordered_map<std::string, QImage> m_icons;
    QElapsedTimer m_loading; // valid once this iteration of the event loop has loaded an icon
    bool m_isRepaintNeeded = false;
};
