#pragma once

#include "platform/Workspace.h"

#include <chrono>
#include <future>
#include <stop_token>
#include <vector>

class MainQueue;

/// The desktop through GIO. Starts programs and lists applications on background threads.
class GioWorkspace final : public Workspace
{
public:
    explicit GioWorkspace(MainQueue &mainQueue);

    GioWorkspace(const GioWorkspace &) = delete;
    GioWorkspace &operator=(const GioWorkspace &) = delete;

    /// Finishes starting what was opened, but waits one second at most before it cancels. A pending
    /// list is not delivered.
    ~GioWorkspace() override;

    void open(const WebAddress &address) override;
    void openApplication(const std::string &path) override;
    std::optional<ApplicationNames> applicationNames(const std::string &path) override;
    QImage applicationIcon(const std::string &path, double size, double scale) override;
    void listApplications(std::function<void(const std::vector<Application> &)> receive) override;

private:
    void runInBackground(std::function<void()> task);
    void waitForTasks(std::chrono::milliseconds timeout) const;

    MainQueue &m_mainQueue;
    std::stop_source m_stop;
    std::vector<std::future<void>> m_tasks; // each one's destructor waits for its task
};
