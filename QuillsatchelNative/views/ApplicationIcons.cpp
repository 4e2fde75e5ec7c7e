#include "views/ApplicationIcons.h"

#include "platform/Workspace.h"

#include <QTimer>

#include <utility>

namespace
{

constexpr qint64 TimeInTurn = 8; // milliseconds, half a frame

} // namespace

ApplicationIcons::ApplicationIcons(int size, Workspace &workspace, QObject *parent)
    : QObject(parent)
    , m_size(size)
    , m_workspace(workspace)
{
}

const QImage *ApplicationIcons::icon(const std::string &path, double scale)
{
    if (m_scale != scale)
        m_icons.clear(); // the window has moved to another screen
    m_scale = scale;
    const auto found = m_icons.find(path);
    if (found != m_icons.end())
        return &found->second;
    if (!hasTime()) {
        m_isMoreWanted = true;
        return nullptr;
    }
    return &m_icons.emplace(path, m_workspace.applicationIcon(path, m_size, scale)).first->second;
}

bool ApplicationIcons::hasTime()
{
    if (m_turn.isValid())
        return m_turn.elapsed() < TimeInTurn;
    m_turn.start();
    QTimer::singleShot(0, this, [this] { beginTurn(); });
    return true;
}

void ApplicationIcons::beginTurn()
{
    m_turn.invalidate();
    if (std::exchange(m_isMoreWanted, false))
        onMore();
}
