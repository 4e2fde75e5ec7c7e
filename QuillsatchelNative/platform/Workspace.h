#pragma once

#include "platform/Application.h"

#include <QImage>

#include <functional>
#include <optional>
#include <string>
#include <vector>

class WebAddress;

/// Lists and opens applications, and opens web addresses. An application is identified by the path
/// of its desktop entry (UTF-8). Main thread only.
class Workspace
{
public:
    virtual ~Workspace() = default;

    /// Opens the unchanged address in the user's browser. Failure is silent.
    virtual void open(const WebAddress &address) = 0;

    /// Starts the application. Single-instance applications raise their window instead. Failure is
    /// silent.
    virtual void openApplication(const std::string &path) = 0;

    /// None if there is no application at `path`.
    virtual std::optional<ApplicationNames> applicationNames(const std::string &path) = 0;

    /// The application's icon, `size` points square at `scale` pixels per point. A generic icon if
    /// there is no such application or it has no icon; null if the desktop has no generic icon.
    virtual QImage applicationIcon(const std::string &path, double size, double scale) = 0;

    /// Calls `receive` with the applications that users can start, sorted by name in the user's
    /// locale. Asynchronous, on the main thread.
    virtual void
    listApplications(std::function<void(const std::vector<Application> &)> receive) = 0;
};
