#pragma once

#include <QElapsedTimer>
#include <QImage>
#include <QObject>

#include <functional>
#include <string>
#include <unordered_map>

class Workspace;

/// The icons of applications for a view to paint. Each is asked of the workspace once, when it is
/// first painted, and only as many in one turn of the event loop as a frame has time for.
class ApplicationIcons final : public QObject
{
    Q_OBJECT

public:
    /// `size` in points.
    ApplicationIcons(int size, Workspace &workspace, QObject *parent);

    /// There is time for icons that were wanted and not had: paint them again.
    std::function<void()> onMore = [] {};

    /// The icon of the application whose desktop entry is at `path`, at `scale` device pixels a
    /// point. Null if its turn has not come, a null image if there is none.
    const QImage *icon(const std::string &path, double scale);

private:
    bool hasTime();
    void beginTurn();

    int m_size;
    Workspace &m_workspace;
    double m_scale = 0; // of all that follow
    std::unordered_map<std::string, QImage> m_icons;
    QElapsedTimer m_turn; // valid once this turn has asked for one
    bool m_isMoreWanted = false;
};
