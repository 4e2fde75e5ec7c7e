#pragma once

#include "launchers/LauncherKind.h"

#include <QUuid>

#include <string>

/// One launcher. Filling a slot anew makes a new one, so its id is never another launcher's.
struct LauncherItem {
    QUuid id = QUuid::createUuid(); ///< also names the website's cached icon
    LauncherKind kind = LauncherKind::application;
    std::string name {};   ///< UTF-8; what menus show
    std::string target {}; ///< an application's path, or a website's whole address

    bool operator==(const LauncherItem &) const = default;
};
