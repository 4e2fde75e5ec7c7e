#pragma once

#include "platform/Workspace.h"

#include <memory>

class MainQueue;

/// The desktop through the module `workspace`, which the first call loads.
class DesktopWorkspace final : public Workspace
{
public:
    explicit DesktopWorkspace(MainQueue &mainQueue)
        : m_mainQueue(mainQueue)
    {
    }

    void open(const WebAddress &address) override;
    void openApplication(const std::string &path) override;
    std::optional<ApplicationNames> applicationNames(const std::string &path) override;
    QImage applicationIcon(const std::string &path, double size, double scale) override;
    void listApplications(std::function<void(const std::vector<Application> &)> receive) override;

private:
    Workspace *module();

    MainQueue &m_mainQueue;
    std::unique_ptr<Workspace> m_module;
};
