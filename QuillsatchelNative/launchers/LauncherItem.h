#pragma once

#include "launchers/LauncherKind.h"

#include <QUuid>

#include <string>

/// A launcher. Refilling a slot creates a new one, so ids are never reused.
struct LauncherItem {
    QUuid id = QUuid::createUuid(); ///< also the name of the website's cached icon
    LauncherKind kind = LauncherKind::application;
    std::string name {};   ///< UTF-8; shown in menus
    std::string target {}; ///< an application's path or a website's full address

    bool operator==(const LauncherItem &) const = default;
};
