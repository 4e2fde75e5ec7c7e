#pragma once

#include "platform/Workspace.h"
#include "support/WebAddress.h"

#include <chrono>
#include <map>
#include <string>
#include <thread>
#include <utility>
#include <vector>

/// A desktop whose applications the test sets. Records what is opened.
class FakeWorkspace final : public Workspace
{
public:
    void open(const WebAddress &address) override { opened.push_back(address.absoluteString()); }

    void openApplication(const std::string &path) override { opened.push_back(path); }

    std::optional<ApplicationNames> applicationNames(const std::string &path) override
    {
        const auto found = names.find(path);
        return found == names.end() ? std::nullopt : std::optional(found->second);
    }

    QImage applicationIcon(const std::string &path, double size, double scale) override
    {
        requestedIcons.push_back(path);
        std::this_thread::sleep_for(iconDelay);
        QImage image = icon.scaled(static_cast<int>(size * scale), static_cast<int>(size * scale));
        image.setDevicePixelRatio(scale);
        return image;
    }

    void listApplications(std::function<void(const std::vector<Application> &)> receive) override
    {
        listings.push_back(std::move(receive));
    }

    /// Answers all requests for the list of applications.
    void finishListing()
    {
        for (const auto &receive : std::exchange(listings, {}))
            receive(applications);
    }

    std::vector<std::string> opened;
    std::map<std::string, ApplicationNames> names; ///< by path
    QImage icon;                                   ///< of every application
    std::chrono::milliseconds iconDelay {};        ///< how long loading an icon blocks
    std::vector<std::string> requestedIcons;
    std::vector<Application> applications;
    std::vector<std::function<void(const std::vector<Application> &)>> listings;
};
