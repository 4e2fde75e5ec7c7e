#pragma once

#include "platform/Workspace.h"
#include "platform/gio/BackgroundTasks.h"

#include <QObject>

#include <stop_token>

/// The desktop through GIO. What may have to wait, for a disk or for another program, is done in
/// the background.
class GioWorkspace final : public Workspace
{
public:
    GioWorkspace();

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
    std::stop_source m_stop;
    QObject m_mainThread; // where messages from the background arrive, which go when this does
    BackgroundTasks m_tasks;
};
