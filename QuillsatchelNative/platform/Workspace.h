#pragma once

#include "platform/Application.h"

#include <QImage>

#include <functional>
#include <optional>
#include <string>
#include <vector>

class WebAddress;

/// The desktop around the program: the applications it has, and what it opens for us. An
/// application is known by the path of its desktop entry (UTF-8). Main thread only.
class Workspace
{
public:
    virtual ~Workspace() = default;

    /// Opens the address, to the letter, with the user's browser. Failure is silent.
    virtual void open(const WebAddress &address) = 0;

    /// Starts the application, or brings it forward if that is its way. Failure is silent.
    virtual void openApplication(const std::string &path) = 0;

    /// None if there is no application at `path`.
    virtual std::optional<ApplicationNames> applicationNames(const std::string &path) = 0;

    /// The application's icon, `size` points square at `scale` device pixels a point. A generic
    /// icon for what is no application; null where the desktop has none either.
    virtual QImage applicationIcon(const std::string &path, double size, double scale) = 0;

    /// Gives `receive` the applications that people may start here, by name in the order of their
    /// language, on a later turn of the main thread.
    virtual void
    listApplications(std::function<void(const std::vector<Application> &)> receive) = 0;
};
