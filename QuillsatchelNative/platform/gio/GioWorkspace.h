#pragma once

#include "platform/Workspace.h"
#include "platform/gio/BackgroundTasks.h"

#include <stop_token>

class MainQueue;

/// The desktop through GIO. What may have to wait, for a disk or for another program, is done in
/// the background.
class GioWorkspace final : public Workspace
{
public:
    explicit GioWorkspace(MainQueue &mainQueue);

    GioWorkspace(const GioWorkspace &) = delete;
    GioWorkspace &operator=(const GioWorkspace &) = delete;

    /// What was opened is still started; applications that are being listed are not received.
    ~GioWorkspace() override;

    void open(const WebAddress &address) override;
    void openApplication(const std::string &path) override;
    std::optional<ApplicationNames> applicationNames(const std::string &path) override;
    QImage applicationIcon(const std::string &path, double size, double scale) override;
    void listApplications(std::function<void(const std::vector<Application> &)> receive) override;

private:
    MainQueue &m_mainQueue;
    std::stop_source m_stop;
    BackgroundTasks m_tasks;
};
