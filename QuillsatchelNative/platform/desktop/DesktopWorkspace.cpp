#include "platform/desktop/DesktopWorkspace.h"

#include "platform/desktop/Module.h"

#include <utility>

Workspace *DesktopWorkspace::module()
{
    if (!m_module)
        m_module = Module::make<Workspace>("workspace", m_mainQueue);
    return m_module.get();
}

void DesktopWorkspace::open(const WebAddress &address)
{
    if (auto *const workspace = module())
        workspace->open(address);
}

void DesktopWorkspace::openApplication(const std::string &path)
{
    if (auto *const workspace = module())
        workspace->openApplication(path);
}

std::optional<ApplicationNames> DesktopWorkspace::applicationNames(const std::string &path)
{
    auto *const workspace = module();
    return workspace ? workspace->applicationNames(path) : std::nullopt;
}

QImage DesktopWorkspace::applicationIcon(const std::string &path, double size, double scale)
{
    auto *const workspace = module();
    return workspace ? workspace->applicationIcon(path, size, scale) : QImage();
}

void DesktopWorkspace::listApplications(
    std::function<void(const std::vector<Application> &)> receive)
{
    if (auto *const workspace = module())
        workspace->listApplications(std::move(receive));
}
