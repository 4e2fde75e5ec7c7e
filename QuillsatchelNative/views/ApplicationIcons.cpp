#include "views/ApplicationIcons.h"

#include "platform/MainQueue.h"
#include "platform/Workspace.h"

#include <QPointer>

#include <utility>

namespace
{

constexpr qint64 LoadingTime = 8; // milliseconds per iteration of the event loop, half a frame

} // namespace

ApplicationIcons::ApplicationIcons(int size, Workspace &workspace, MainQueue &mainQueue,
                                   QObject *parent)
    : QObject(parent)
    , m_size(size)
    , m_workspace(workspace)
    , m_mainQueue(mainQueue)
{
}

const QImage *ApplicationIcons::icon(const std::string &path, double scale)
{
    if (m_scale != scale)
        m_icons.clear(); // the window moved to a screen with another scale
    m_scale = scale;
    const auto found = m_icons.find(path);
    if (found != m_icons.end())
        return &found->second;
    if (!hasTime()) {
        m_isRepaintNeeded = true;
        return nullptr;
    }
    return &m_icons.emplace(path, m_workspace.applicationIcon(path, m_size, scale)).first->second;
}

bool ApplicationIcons::hasTime()
{
    if (m_loading.isValid())
        return m_loading.elapsed() < LoadingTime;
    m_loading.start();
    m_mainQueue.async([icons = QPointer(this)] {
        if (icons)
            icons->renewTime();
    });
    return true;
}

void ApplicationIcons::renewTime()
{
    m_loading.invalidate();
    if (std::exchange(m_isRepaintNeeded, false))
        onRepaint();
}
